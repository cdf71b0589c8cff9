# Puts the package where Python of the install prefix looks for it.
set(python ${Python3_VERSION_MAJOR}.${Python3_VERSION_MINOR})
execute_process(
  COMMAND ${Python3_EXECUTABLE} -c "import sysconfig; print('deb_system' in sysconfig.get_scheme_names())"
  OUTPUT_VARIABLE debian OUTPUT_STRIP_TRAILING_WHITESPACE)
if(NOT debian STREQUAL "True")
  set(folder lib/python${python}/site-packages)
elseif(CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  set(folder lib/python3/dist-packages)
else()
  set(folder lib/python${python}/dist-packages)
endif()
set(MVFREQ_PYTHON_DIR ${folder} CACHE STRING "Folder of Python packages, below the install prefix")

# Libraries that the system finds by itself need no path.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  file(RELATIVE_PATH to_libraries
    /prefix/${MVFREQ_PYTHON_DIR}/mvfreq /prefix/${CMAKE_INSTALL_LIBDIR})
  set_target_properties(mvfreq_python PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
endif()

install(TARGETS mvfreq_python LIBRARY DESTINATION ${MVFREQ_PYTHON_DIR}/mvfreq COMPONENT python)
foreach(file IN LISTS package_files)
  install(FILES mvfreq/${file} DESTINATION ${MVFREQ_PYTHON_DIR}/mvfreq COMPONENT python)
endforeach()
