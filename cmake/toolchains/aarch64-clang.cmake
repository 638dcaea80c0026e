# Linux on ARM64 by Clang, with the headers and libraries of Debian's cross compiler; programs run under QEMU.
include(${CMAKE_CURRENT_LIST_DIR}/aarch64.cmake)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET aarch64-linux-gnu)
