# IBM Z: big-endian.
set(CMAKE_SYSTEM_PROCESSOR s390x)
set(MVFREQ_CROSS_TRIPLET s390x-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-s390x)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
