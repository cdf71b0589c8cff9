# The first thing that the compiler says of each header in an older dialect is which one it needs.
foreach(header IN LISTS HEADERS)
  execute_process(
    COMMAND ${COMPILER} -std=c++17 -Wfatal-errors -fsyntax-only -I${FOLDER} -include ${header}
      -x c++ /dev/null
    RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
  if(result EQUAL 0 OR NOT said MATCHES "error: [^\n]*mvfreq needs C\\+\\+20")
    message(SEND_ERROR "Of ${header} the compiler says:\n${said}")
  endif()
endforeach()
