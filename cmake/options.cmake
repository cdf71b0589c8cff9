# Compiler settings that every target of the project shares.

if(NOT CMAKE_BUILD_TYPE AND NOT CMAKE_CONFIGURATION_TYPES)
  set(CMAKE_BUILD_TYPE Release CACHE STRING "Build type" FORCE)
endif()

if(NOT CMAKE_CXX_STANDARD)
  set(CMAKE_CXX_STANDARD 20)
endif()
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_POSITION_INDEPENDENT_CODE ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# Windows looks for DLLs in the folder of the program.
if(WIN32 AND PROJECT_IS_TOP_LEVEL AND NOT CMAKE_RUNTIME_OUTPUT_DIRECTORY)
  set(CMAKE_RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/bin)
endif()

# Both libraries include this header, which refuses flags that give bits away.
include(CheckCXXSourceCompiles)
set(CMAKE_REQUIRED_INCLUDES ${PROJECT_SOURCE_DIR})
check_cxx_source_compiles("#include <internal/product.h>\nint main() {}" MVFREQ_KEEPS_ITS_BITS)
unset(CMAKE_REQUIRED_INCLUDES)
if(NOT MVFREQ_KEEPS_ITS_BITS)
  message(FATAL_ERROR "mvfreq: every build gives the same bits. Leave out -ffast-math, its parts, -Ofast "
    "and /fp:fast; for 32-bit x86 add -msse2 -mfpmath=sse.")
endif()

check_cxx_source_compiles("#if !defined(__cpp_rtti) || !defined(__cpp_exceptions)\n#error\n#endif\nint main() {}"
  MVFREQ_KNOWS_TYPES)
if(NOT MVFREQ_KNOWS_TYPES)
  message(FATAL_ERROR "mvfreq: archives find classes by their type information, and errors are exceptions. "
    "Leave out -fno-rtti and -fno-exceptions.")
endif()

# Contraction into fused multiply-add would change results from machine to machine.
add_compile_options(-ffp-contract=off)

# g++ 12 leaves out lanes of some selections where vectors are longer than it knows of, as with SVE on
# processors that have more than 128 bits. So it may vectorise for the four lanes that all have, no more.
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_SYSTEM_PROCESSOR MATCHES "aarch64|arm64")
  include(CheckCXXCompilerFlag)
  foreach(preference 1 asimd-only)
    set(flag --param=aarch64-autovec-preference=${preference})
    check_cxx_compiler_flag(${flag} MVFREQ_PREFERS_${preference})
    if(MVFREQ_PREFERS_${preference})
      add_compile_options(${flag})
      add_link_options(${flag})
      break()
    endif()
  endforeach()
endif()

add_compile_options(-Wall -Wextra -Wpedantic -Wconversion -Wsign-conversion -Wshadow)
if(MVFREQ_WARNINGS_AS_ERRORS)
  add_compile_options(-Werror)
endif()

# One library of the project: its objects, for tests that reach internals, and the library itself.
#   mvfreq_add_library(<name> PUBLIC_HEADERS <headers> SOURCES <sources>)
function(mvfreq_add_library name)
  cmake_parse_arguments(ARG "" "" "PUBLIC_HEADERS;SOURCES" ${ARGN})
  string(TOUPPER ${name} upper)

  add_library(${name}_objects OBJECT ${ARG_SOURCES})
  target_include_directories(${name}_objects PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>)
  # Who links the objects imports nothing either.
  target_compile_definitions(${name}_objects PUBLIC ${upper}_BUILDING)

  add_library(${name} $<TARGET_OBJECTS:${name}_objects>)
  add_library(mvfreq::${name} ALIAS ${name})
  target_compile_features(${name} PUBLIC cxx_std_20)
  target_include_directories(${name} PUBLIC
    $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}>
    $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/mvfreq>)
  set_target_properties(${name} PROPERTIES VERSION ${PROJECT_VERSION} SOVERSION ${MVFREQ_SOVERSION})
  if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
    set(map ${PROJECT_SOURCE_DIR}/cmake/standard_library.map)
    target_link_options(${name} PRIVATE LINKER:--version-script=${map})
    set_target_properties(${name} PROPERTIES LINK_DEPENDS ${map})
  endif()
  if(NOT BUILD_SHARED_LIBS)
    target_compile_definitions(${name}_objects PUBLIC ${upper}_STATIC)
    target_compile_definitions(${name} PUBLIC ${upper}_STATIC)
  endif()
  set_property(TARGET ${name} PROPERTY MVFREQ_PUBLIC_HEADERS ${ARG_PUBLIC_HEADERS})

  install(TARGETS ${name} EXPORT mvfreqTargets
    LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev
    ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT dev
    RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime)
  foreach(header IN LISTS ARG_PUBLIC_HEADERS)
    get_filename_component(folder ${header} DIRECTORY)
    install(FILES ${PROJECT_SOURCE_DIR}/${header}
      DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/mvfreq/${folder} COMPONENT dev)
  endforeach()
endfunction()
