# With a SENTENCE the compiler must refuse the program and say that; without it must take it.
execute_process(
  COMMAND ${COMPILER} -std=c++20 -fsyntax-only -Werror=unused-result -I${FOLDER} ${SOURCE}
  RESULT_VARIABLE result OUTPUT_VARIABLE said ERROR_VARIABLE said)
file(READ ${SOURCE} program)
if(SENTENCE STREQUAL "")
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "This must compile:\n${program}\n${said}")
  endif()
elseif(result EQUAL 0)
  message(FATAL_ERROR "This must not compile:\n${program}")
elseif(NOT said MATCHES "error: [^\n]*${SENTENCE}")
  message(FATAL_ERROR "The compiler does not say \"${SENTENCE}\" of\n${program}\n${said}")
endif()
