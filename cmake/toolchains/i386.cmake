# 32-bit x86, with the arithmetic of SSE2.
set(CMAKE_SYSTEM_PROCESSOR i686)
set(MVFREQ_CROSS_TRIPLET i686-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-i386)
set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse")
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
