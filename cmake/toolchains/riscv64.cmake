# 64-bit RISC-V.
set(CMAKE_SYSTEM_PROCESSOR riscv64)
set(MVFREQ_CROSS_TRIPLET riscv64-linux-gnu)
set(MVFREQ_CROSS_EMULATOR qemu-riscv64)
include(${CMAKE_CURRENT_LIST_DIR}/debian-cross.cmake)
