# 64-bit Windows by Debian's cross compiler, the one with threads of the C++ library; what it builds
# runs under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_C_COMPILER x86_64-w64-mingw32-gcc-posix)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Where scripts/windows-libraries.sh has put what the program needs.
set(MVFREQ_WINDOWS_LIBRARIES "" CACHE PATH "Libraries for Windows")
set(CMAKE_FIND_ROOT_PATH ${MVFREQ_WINDOWS_LIBRARIES} /usr/x86_64-w64-mingw32)
foreach(kind PACKAGE LIBRARY INCLUDE)
  set(CMAKE_FIND_ROOT_PATH_MODE_${kind} ONLY)
endforeach()
# Debian keeps the 64-bit loader beside its libraries; other systems have it among the programs.
find_program(MVFREQ_WINE NAMES wine64 wine64-stable wine wine-stable PATHS /usr/lib/wine
  NO_CMAKE_FIND_ROOT_PATH)
set(CMAKE_CROSSCOMPILING_EMULATOR ${MVFREQ_WINE})
set(ZLIB_USE_STATIC_LIBS ON)
# Programs and libraries need nothing beside the system.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT "-static-libgcc -static-libstdc++ -static")
