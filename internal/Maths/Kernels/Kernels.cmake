# The loops of the batch forms and the noise, each file for newer processors with the flags of its kind. The library is
# made of them, and so are the programs that look at every set of loops, whatever the library would choose.
function(bv_add_kernels target)
  set(folder ${CMAKE_CURRENT_FUNCTION_LIST_DIR})
  target_sources(${target} PRIVATE ${folder}/Baseline.cpp ${folder}/Choice.cpp ${folder}/Noise/Tables.cpp)
  if(BV_USES_X86)
    target_sources(${target} PRIVATE ${folder}/Avx2.cpp ${folder}/Avx512.cpp)
    set_source_files_properties(${folder}/Avx2.cpp TARGET_DIRECTORY ${target} PROPERTIES COMPILE_OPTIONS -mavx2)
    set_source_files_properties(${folder}/Avx512.cpp TARGET_DIRECTORY ${target} PROPERTIES
      COMPILE_OPTIONS "-mavx512f;-mavx512bw;-mavx512dq;-mavx512vl;-mavx512vbmi")
  endif()
endfunction()

# The same with the batch forms themselves, which a program then has of its own instead of the library's.
function(bv_add_batch_forms target)
  set(folder ${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../Batch)
  target_sources(${target} PRIVATE ${folder}/Bounds.cpp ${folder}/Job.cpp ${folder}/Numbers.cpp ${folder}/Rays.cpp
    ${folder}/Transforms.cpp)
  bv_add_kernels(${target})
  target_include_directories(${target} PRIVATE ${PROJECT_SOURCE_DIR}/internal)
  if(WIN32) # the headers would declare them as the DLL's
    target_compile_definitions(${target} PRIVATE BV_STATIC)
  endif()
endfunction()
