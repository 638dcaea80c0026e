# Clang under MemorySanitizer, with the standard library of GCC as it is installed. Code that is not instrumented sets values
# unseen, so streams and strings are compiled into each program instead of being taken from the shared library: a copy of
# the one header that says so, with that line changed, stands before the other headers. What such code leaves on the stack
# would be taken for what an earlier function left unset there: of variables, those are followed that are no arrays.
set(CMAKE_CXX_COMPILER clang++)
set(folder ${CMAKE_BINARY_DIR}/with-own-instances)
if(NOT EXISTS ${folder}/bits/c++config.h)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -x c++ -M -include cstddef /dev/null OUTPUT_VARIABLE headers)
  string(REGEX MATCH "[^ \n]*/bits/c[+][+]config[.]h" header "${headers}")
  file(READ ${header} text)
  string(REPLACE "# define _GLIBCXX_EXTERN_TEMPLATE 1" "# define _GLIBCXX_EXTERN_TEMPLATE 0" changed "${text}")
  if(changed STREQUAL text)
    message(FATAL_ERROR "Not the standard library of GCC, or another version of it: ${header}")
  endif()
  file(WRITE ${folder}/bits/c++config.h "${changed}")
endif()
string(CONCAT CMAKE_CXX_FLAGS_INIT "-fsanitize=memory -fsanitize-memory-track-origins=2 -fno-omit-frame-pointer "
  "-mllvm -msan-poison-stack=0 -isystem ${folder} "
  "-fsanitize-ignorelist=${CMAKE_CURRENT_LIST_DIR}/../../tests/support/memory.ignore")
# The linker is told the same flags, one of which is the compiler's.
foreach(kind EXE SHARED MODULE)
  set(CMAKE_${kind}_LINKER_FLAGS_INIT -Wno-unused-command-line-argument)
endforeach()
