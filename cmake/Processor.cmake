# Loops for each kind of x86 processor, to choose from at run time.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$" AND NOT BV_PLAIN_CXX)
  set(BV_USES_X86 ON)
else()
  set(BV_USES_X86 OFF)
endif()
