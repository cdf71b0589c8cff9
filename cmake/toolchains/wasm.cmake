# Debian's emscripten, for WebAssembly with vectors and its own exceptions; what it builds runs under
# node. Linking looks for acorn where Debian's node-acorn is.
set(EMSCRIPTEN_ROOT_PATH /usr/share/emscripten)
include(${EMSCRIPTEN_ROOT_PATH}/cmake/Modules/Platform/Emscripten.cmake)
# That file names an x86 processor, of which there are no paths here.
set(CMAKE_SYSTEM_PROCESSOR wasm32)
# clang 14 gets straight-line code wrong that it makes vectors of, in the plain loops at -O2; loops and
# vectors that are written as such are not touched by that.
set(CMAKE_CXX_FLAGS_INIT "-msimd128 -fwasm-exceptions -fno-slp-vectorize")
set(CMAKE_CXX_LINKER_LAUNCHER ${CMAKE_COMMAND} -E env NODE_PATH=/usr/share/nodejs)
# Programs read and write the files of the machine.
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-sALLOW_MEMORY_GROWTH=1 -sMAXIMUM_MEMORY=4GB -sNODERAWFS=1 -sEXIT_RUNTIME=1")
set(CMAKE_CROSSCOMPILING_EMULATOR node --no-experimental-fetch)
