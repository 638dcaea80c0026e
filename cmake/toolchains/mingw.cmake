# 64-bit Windows by MinGW-w64's g++ with POSIX threads, from Debian's packages; programs run under Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
include(${CMAKE_CURRENT_LIST_DIR}/wine.cmake)
