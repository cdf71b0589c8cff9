# What Debian's cross compilers for Linux have in common, of the processor `MVFREQ_CROSS_TRIPLET`
# begins with; what they build runs under qemu-user.
set(CMAKE_SYSTEM_NAME Linux)
# clang++ is one program for all of them, and has their libraries from g++.
if(CMAKE_CXX_COMPILER MATCHES "clang")
  set(CMAKE_CXX_COMPILER_TARGET ${MVFREQ_CROSS_TRIPLET})
else()
  set(CMAKE_CXX_COMPILER ${MVFREQ_CROSS_TRIPLET}-g++)
endif()
set(CMAKE_FIND_ROOT_PATH /usr/${MVFREQ_CROSS_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
set(CMAKE_CROSSCOMPILING_EMULATOR ${MVFREQ_CROSS_EMULATOR} -L /usr/${MVFREQ_CROSS_TRIPLET})
