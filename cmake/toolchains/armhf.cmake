# 32-bit ARM.
set(CMAKE_SYSTEM_PROCESSOR armv7l)
set(MVFREQ_CROSS_TRIPLET arm-linux-gnueabihf)
set(MVFREQ_CROSS_EMULATOR qemu-arm)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
