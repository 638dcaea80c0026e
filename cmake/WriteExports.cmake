# Writes the module definition file of a DLL: what the objects define in the library's namespace, and the output
# operators of its types. The attribute dllexport is not enough, for GCC and Clang leave out the inline members of
# explicit instances.
#
# Usage: cmake -DNM=PROGRAM -DOBJECTS=LIST -DOUTPUT=FILE -P WriteExports.cmake
execute_process(COMMAND ${NM} --defined-only --format=posix ${OBJECTS} OUTPUT_VARIABLE symbols COMMAND_ERROR_IS_FATAL ANY)
string(REGEX MATCHALL "\n_Z(TI|TS|TV|)(NK?2bv|lsI[^ \n]*N2bv)[^ \n]* [DRT] " symbols "${symbols}")
# The sources' own helpers, each with the length of its name in front, as compilers write it.
set(core 9EmptyText 9Exception13ExceptionImpl 6String10StringImpl 10conversion)
set(maths 5batch 10KernelSets 12FunctionName 12NOISE_TABLES 4Join 7ReadRaw 9ReadApart 9SetPlanes 6TextOf 4Turn
  22RaiseInvalidViewMatrix 6TurnBy 8WriteRaw "[0-9]+[A-Z][a-z0-9]+Kernels")
list(JOIN core "|" core)
list(JOIN maths "|" maths)
list(FILTER symbols EXCLUDE REGEX "_ZNK?2bv(${core}|5maths(${maths}))")
list(TRANSFORM symbols REPLACE "\n([^ ]+) ([DRT]) " "\\1 \\2")
list(TRANSFORM symbols REPLACE " T$" "")
list(TRANSFORM symbols REPLACE " [DR]$" " DATA")
list(REMOVE_DUPLICATES symbols)
list(SORT symbols)
list(PREPEND symbols EXPORTS)
list(JOIN symbols "\n" symbols)
file(WRITE ${OUTPUT} "${symbols}\n")
