# 32-bit x86, with the arithmetic of SSE2.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(MVFREQ_CROSS_TRIPLET i686-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-i386)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
# Most 64-bit systems run it themselves, by the loader of its C library, many times as fast.
set(MVFREQ_CROSS_LIBRARIES /usr/${MVFREQ_CROSS_TRIPLET}/lib)
set(MVFREQ_CROSS_LOADER ${MVFREQ_CROSS_LIBRARIES}/ld-linux.so.2)
execute_process(COMMAND ${MVFREQ_CROSS_LOADER} --version
  RESULT_VARIABLE MVFREQ_CROSS_LOADER_RESULT OUTPUT_QUIET ERROR_QUIET)
if(MVFREQ_CROSS_LOADER_RESULT EQUAL 0)
  set(CMAKE_CROSSCOMPILING_EMULATOR ${MVFREQ_CROSS_LOADER} --library-path ${MVFREQ_CROSS_LIBRARIES})
endif()
