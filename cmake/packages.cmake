# Debian packages: one for each install component, made by cpack.
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME mvfreq)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
# Else it would stand above the summary of every package.
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "")
set(CPACK_PACKAGING_INSTALL_PREFIX ${CMAKE_INSTALL_PREFIX})
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "The mvfreq developers <mvfreq@example.org>")
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR}/base ${PROJECT_BINARY_DIR}/filt)

set(version ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})
set(library libmvfreq${MVFREQ_SOVERSION})
# The time of SOURCE_DATE_EPOCH where that is set.
string(TIMESTAMP date "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(cmake/debian/changelog.in changelog @ONLY)
find_program(MVFREQ_GZIP gzip REQUIRED)
execute_process(COMMAND ${MVFREQ_GZIP} -9nkf changelog
  WORKING_DIRECTORY ${PROJECT_BINARY_DIR} COMMAND_ERROR_IS_FATAL ANY)

#   mvfreq_package(<component> NAME <package> SECTION <section> SUMMARY <line> TEXT <more>
#                  [DEPENDS <other packages>])
macro(mvfreq_package component)
  cmake_parse_arguments(ARG "" "NAME;SECTION;SUMMARY;TEXT;DEPENDS" "" ${ARGN})
  string(TOUPPER ${component} upper)
  list(APPEND CPACK_COMPONENTS_ALL ${component})
  set(CPACK_DEBIAN_${upper}_PACKAGE_NAME ${ARG_NAME})
  set(CPACK_DEBIAN_${upper}_PACKAGE_SECTION ${ARG_SECTION})
  set(CPACK_DEBIAN_${upper}_PACKAGE_DEPENDS "${ARG_DEPENDS}")
  set(CPACK_DEBIAN_${upper}_DESCRIPTION "${ARG_SUMMARY}\n${ARG_TEXT}")
  install(FILES ${PROJECT_SOURCE_DIR}/cmake/debian/copyright
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${ARG_NAME} COMPONENT ${component})
  install(FILES ${PROJECT_BINARY_DIR}/changelog.gz RENAME changelog.Debian.gz
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/${ARG_NAME} COMPONENT ${component})
endmacro()

mvfreq_package(runtime NAME ${library} SECTION libs
  SUMMARY "frequency-domain image processing for machine vision"
  TEXT "Transforms images of 8 bits, 16 bits and floating point, applies band-pass,\nband-reject, Gabor and image filters, and transforms them back, with the same\nbits on every machine.")
# cpack would write this file as well, but warns of each module for Python that is no library.
file(CONFIGURE OUTPUT shlibs @ONLY CONTENT
"libmvbase @MVFREQ_SOVERSION@ @library@ (= @version@)
libmvfreq @MVFREQ_SOVERSION@ @library@ (= @version@)
")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_SOURCE_DIR}/cmake/debian/runtime/triggers ${PROJECT_BINARY_DIR}/shlibs)

mvfreq_package(dev NAME libmvfreq-dev SECTION libdevel
  SUMMARY "frequency-domain image processing, development files"
  TEXT "Headers, CMake package and pkg-config files of the library mvfreq."
  DEPENDS "${library} (= ${version})")

if(TARGET mvfreq_tool)
  mvfreq_package(tools NAME mvfreq SECTION graphics
    SUMMARY "filter pictures in the frequency domain"
    TEXT "A command line program that finds defects in textures, removes screens from\nprints, and shows spectra and the responses of filters."
    DEPENDS "${library} (= ${version})")
  # Opens the explorer in the desktop's browser.
  set(CPACK_DEBIAN_TOOLS_PACKAGE_SUGGESTS xdg-utils)
endif()

mvfreq_package(docs NAME mvfreq-doc SECTION doc
  SUMMARY "frequency-domain image processing, documents"
  TEXT "Documents and examples of the library and the program mvfreq.")
set(CPACK_DEBIAN_DOCS_PACKAGE_ARCHITECTURE all)
set(CPACK_DEBIAN_DOCS_PACKAGE_SHLIBDEPS OFF)
install(FILES README.md CHANGELOG.md CONTRIBUTING.md
  DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/mvfreq-doc COMPONENT docs)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/mvfreq-doc COMPONENT docs
  FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  PATTERN CMakeLists.txt EXCLUDE PATTERN Doxyfile EXCLUDE PATTERN doxygen_filter.py EXCLUDE)
install(DIRECTORY python/examples DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/mvfreq-doc/python
  COMPONENT docs FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ
  PATTERN __pycache__ EXCLUDE)
if(TARGET doc)
  set_target_properties(doc PROPERTIES EXCLUDE_FROM_ALL OFF)
  install(DIRECTORY ${PROJECT_BINARY_DIR}/reference
    DESTINATION ${CMAKE_INSTALL_DATAROOTDIR}/doc/mvfreq-doc COMPONENT docs)
endif()

if(TARGET mvfreq_python)
  find_package(Python3 REQUIRED COMPONENTS Interpreter)
  math(EXPR next "${Python3_VERSION_MINOR} + 1")
  mvfreq_package(python NAME python3-mvfreq SECTION python
    SUMMARY "frequency-domain image processing for machine vision, Python module"
    TEXT "The library mvfreq on numpy arrays, without copies where their layout allows."
    DEPENDS "${library} (= ${version}), python3 (>= 3.${Python3_VERSION_MINOR}), python3 (<< 3.${next}), python3-numpy")
  set(CPACK_DEBIAN_PYTHON_PACKAGE_CONTROL_EXTRA
    ${PROJECT_SOURCE_DIR}/cmake/debian/python/postinst ${PROJECT_SOURCE_DIR}/cmake/debian/python/prerm)
endif()

include(CPack)
