# The CMake package, the pkg-config files, and the target that takes all back.
include(CMakePackageConfigHelpers)

install(EXPORT mvfreqTargets NAMESPACE mvfreq:: DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mvfreq
  COMPONENT dev)
configure_package_config_file(cmake/mvfreqConfig.cmake.in
  ${PROJECT_BINARY_DIR}/mvfreqConfig.cmake
  INSTALL_DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mvfreq)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/mvfreqConfigVersion.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES ${PROJECT_BINARY_DIR}/mvfreqConfig.cmake ${PROJECT_BINARY_DIR}/mvfreqConfigVersion.cmake
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/cmake/mvfreq COMPONENT dev)

# The pkg-config files find the headers from where they are, so that an installed tree can move.
file(RELATIVE_PATH MVFREQ_PC_TO_PREFIX
  ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig ${CMAKE_INSTALL_PREFIX})
if(NOT BUILD_SHARED_LIBS)
  set(MVBASE_PC_CFLAGS " -DMVBASE_STATIC")
  set(MVFREQ_PC_CFLAGS " -DMVFREQ_STATIC")
endif()
foreach(name mvbase mvfreq)
  configure_file(cmake/${name}.pc.in ${PROJECT_BINARY_DIR}/${name}.pc @ONLY)
  install(FILES ${PROJECT_BINARY_DIR}/${name}.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig
    COMPONENT dev)
endforeach()

if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall
    COMMAND ${CMAKE_COMMAND} -DFOLDER=${PROJECT_BINARY_DIR}
      -P ${PROJECT_SOURCE_DIR}/cmake/uninstall.cmake
    USES_TERMINAL VERBATIM)
endif()
