# Writes the module definition file of a DLL: what the objects define in the library's namespace, and the output
# operators of its types. The attribute dllexport is not enough, for GCC and Clang leave out the inline members of
# explicit instances.
#
# Usage: cmake -DNM=PROGRAM -DOBJECTS=LIST -DOUTPUT=FILE -P WriteExports.cmake
execute_process(COMMAND ${NM} --defined-only --format=posix ${OBJECTS} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n_Z(TI|TS|TV|)(NK?2bv|lsI[^ \n]*N2bv)[^ \n]* [DRT] " symbols "${symbols}")
# Helpers that several of the library's sources share.
list(FILTER symbols EXCLUDE REGEX
  "_ZNK?2bv(9EmptyText|10conversion|5maths(5batch|11FreshStream|12FunctionName|4Join|10KernelSets|[0-9]+[A-Z][a-z0-9]+Kernels))")
list(TRANSFORM symbols REPLACE "\n([^ ]+) ([DRT]) " "\\1 \\2")
list(TRANSFORM symbols REPLACE " T$" "")
list(TRANSFORM symbols REPLACE " [DR]$" " DATA")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)
list(PREPEND symbols EXPORTS)
list(JOIN symbols "\n" symbols)
file(WRITE ${OUTPUT} "${symbols}\n")
