# 64-bit Windows by Clang, with the headers and libraries of MinGW-w64's g++ from Debian's packages; programs run under
# Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER clang++)
set(CMAKE_CXX_COMPILER_TARGET x86_64-w64-mingw32)

# Clang looks for a folder that is named after the version alone, and Debian's has the model of threads in its name.
file(GLOB BV_MINGW_GCC /usr/lib/gcc/x86_64-w64-mingw32/*-posix)
list(GET BV_MINGW_GCC -1 BV_MINGW_GCC)
string(REGEX REPLACE ".*/([0-9]+)-posix$" "\\1" BV_MINGW_VERSION ${BV_MINGW_GCC})
set(BV_MINGW_SYSROOT ${CMAKE_BINARY_DIR}/mingw)
file(MAKE_DIRECTORY ${BV_MINGW_SYSROOT}/lib/gcc/x86_64-w64-mingw32)
file(CREATE_LINK ${BV_MINGW_GCC} ${BV_MINGW_SYSROOT}/lib/gcc/x86_64-w64-mingw32/${BV_MINGW_VERSION} SYMBOLIC)
file(CREATE_LINK /usr/x86_64-w64-mingw32 ${BV_MINGW_SYSROOT}/x86_64-w64-mingw32 SYMBOLIC)
set(CMAKE_CXX_FLAGS_INIT --sysroot=${BV_MINGW_SYSROOT})
include(${CMAKE_CURRENT_LIST_DIR}/wine.cmake)
