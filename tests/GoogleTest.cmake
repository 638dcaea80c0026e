# GoogleTest from its sources, for compilers of other systems and other standard libraries: as Debian's package googletest installs them.
find_path(BV_GOOGLETEST_SOURCES src/gtest-all.cc HINTS /usr/src/googletest/googletest NO_CMAKE_FIND_ROOT_PATH)
mark_as_advanced(BV_GOOGLETEST_SOURCES)
if(BV_GOOGLETEST_SOURCES)
  find_package(Threads REQUIRED)
  add_library(gtest_main STATIC EXCLUDE_FROM_ALL
    ${BV_GOOGLETEST_SOURCES}/src/gtest-all.cc ${BV_GOOGLETEST_SOURCES}/src/gtest_main.cc)
  add_library(GTest::gtest_main ALIAS gtest_main)
  target_compile_features(gtest_main PUBLIC cxx_std_20)
  target_include_directories(gtest_main SYSTEM PUBLIC ${BV_GOOGLETEST_SOURCES}/include PRIVATE ${BV_GOOGLETEST_SOURCES})
  target_link_libraries(gtest_main PUBLIC Threads::Threads)
endif()
