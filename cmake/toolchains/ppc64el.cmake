# 64-bit POWER, little-endian.
set(CMAKE_SYSTEM_PROCESSOR ppc64le)
set(MVFREQ_CROSS_TRIPLET powerpc64le-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-ppc64le)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
