# The installed package: library, headers, CMake package and pkg-config file, licence, and what debuggers show. All of it may
# be moved after installation. packaging/manifest.txt lists the files.
set(BV_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/BvBaseUtils)

install(TARGETS BvBaseUtils EXPORT BvBaseUtilsTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development
  FILE_SET HEADERS DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILE_SET avx_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development
  FILE_SET interoperation_headers DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT development)
install(EXPORT BvBaseUtilsTargets NAMESPACE BvBaseUtils:: DESTINATION ${BV_CMAKE_DIR} COMPONENT development)

configure_package_config_file(cmake/BvBaseUtilsConfig.cmake.in ${PROJECT_BINARY_DIR}/BvBaseUtilsConfig.cmake
  INSTALL_DESTINATION ${BV_CMAKE_DIR})
write_basic_package_version_file(${PROJECT_BINARY_DIR}/BvBaseUtilsConfigVersion.cmake COMPATIBILITY SameMinorVersion)
install(FILES ${PROJECT_BINARY_DIR}/BvBaseUtilsConfig.cmake ${PROJECT_BINARY_DIR}/BvBaseUtilsConfigVersion.cmake
  DESTINATION ${BV_CMAKE_DIR} COMPONENT development)

# pkg-config has no generator expressions: spell out what the target carries.
set(BV_PC_CFLAGS "-std=c++20")
if(BV_FP_CONTRACT_OFF)
  string(APPEND BV_PC_CFLAGS " -ffp-contract=off")
endif()
if(NOT BUILD_SHARED_LIBS)
  string(APPEND BV_PC_CFLAGS " -DBV_STATIC")
endif()
if(BV_PLAIN_CXX)
  string(APPEND BV_PC_CFLAGS " -DBV_PLAIN_CXX")
endif()
string(TOUPPER "${CMAKE_BUILD_TYPE}" BV_CONFIGURATION)
set(BV_PC_LIBRARY BvBaseUtils${CMAKE_${BV_CONFIGURATION}_POSTFIX}) # where Debug and Release stand side by side
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_INCLUDEDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE BV_PC_INCLUDEDIR)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_FULL_LIBDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX} OUTPUT_VARIABLE BV_PC_LIBDIR)
cmake_path(RELATIVE_PATH CMAKE_INSTALL_PREFIX BASE_DIRECTORY ${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig OUTPUT_VARIABLE BV_PC_PREFIX)
configure_file(packaging/BvBaseUtils.pc.in ${PROJECT_BINARY_DIR}/BvBaseUtils.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/BvBaseUtils.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

install(FILES LICENSE CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT development)

# What debuggers show, see docs/debuggers.md. GDB runs a script together with the library whose path and name it repeats; the
# prefix in that path is known when the library is installed.
foreach(file debuggers/bvbaseutils_texts.py gdb/bvbaseutils_printers.py lldb/bvbaseutils_lldb.py)
  cmake_path(GET file PARENT_PATH folder)
  install(FILES packaging/${file} DESTINATION ${CMAKE_INSTALL_DATADIR}/BvBaseUtils/${folder} COMPONENT development)
endforeach()
if(BUILD_SHARED_LIBS AND CMAKE_SYSTEM_NAME STREQUAL "Linux")
  install(FILES packaging/gdb/autoload.py
    DESTINATION ${CMAKE_INSTALL_DATADIR}/gdb/auto-load\${CMAKE_INSTALL_PREFIX}/${BV_PC_LIBDIR}
    RENAME $<TARGET_FILE_NAME:BvBaseUtils>-gdb.py COMPONENT development)
endif()

# Visual Studio takes this file from the programs that it is linked into, as a source of theirs.
set(BV_NATVIS ${CMAKE_INSTALL_DATADIR}/BvBaseUtils/BvBaseUtils.natvis)
set(BV_HAS_NATVIS "$<AND:$<PLATFORM_ID:Windows>,$<CXX_COMPILER_ID:MSVC,Clang>>")
target_sources(BvBaseUtils INTERFACE
  $<BUILD_INTERFACE:$<${BV_HAS_NATVIS}:${PROJECT_SOURCE_DIR}/packaging/BvBaseUtils.natvis>>
  $<INSTALL_INTERFACE:$<${BV_HAS_NATVIS}:$<INSTALL_PREFIX>/${BV_NATVIS}>>)
install(FILES packaging/BvBaseUtils.natvis DESTINATION ${CMAKE_INSTALL_DATADIR}/BvBaseUtils COMPONENT development)
