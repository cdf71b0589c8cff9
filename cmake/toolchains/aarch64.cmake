# 64-bit ARM.
set(CMAKE_SYSTEM_PROCESSOR aarch64)
set(MVFREQ_CROSS_TRIPLET aarch64-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-aarch64)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
