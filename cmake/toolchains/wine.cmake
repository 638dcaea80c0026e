# What the toolchain files for Windows share.
set(CMAKE_CROSSCOMPILING_EMULATOR wine)

# Programs, libraries and packages of the building machine are none of Windows'. utfcpp is: it consists of headers.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
if(NOT utf8cpp_DIR)
  file(GLOB utf8cpp_DIR /usr/lib/*/cmake/utf8cpp /usr/share/*/cmake/utf8cpp /usr/share/utf8cpp/cmake)
  list(GET utf8cpp_DIR 0 utf8cpp_DIR)
endif()
