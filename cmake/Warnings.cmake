# The warnings that this project's own code is free of; consumers keep their own.
function(bv_set_warnings target)
  target_compile_options(${target} PRIVATE
    $<$<CXX_COMPILER_ID:GNU,Clang,AppleClang>:-Wall -Wextra -Wpedantic -Wconversion -Wshadow -Wsign-conversion
    -Wdouble-promotion -Wnon-virtual-dtor>
    $<$<AND:$<BOOL:${BV_WARNINGS_AS_ERRORS}>,$<CXX_COMPILER_ID:GNU,Clang,AppleClang>>:-Werror>)
endfunction()
