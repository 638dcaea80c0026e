# Three Debian packages, made by CPack: the library, what programs are built with, and the manual. `tools/package` makes
# them. Their place is /usr, which GDB's script repeats in its path, so that the tree must be configured for it.
if(NOT CMAKE_INSTALL_PREFIX STREQUAL "/usr")
  message(FATAL_ERROR "Debian packages are made with -DCMAKE_INSTALL_PREFIX=/usr.")
endif()
find_program(BV_GZIP gzip REQUIRED)
mark_as_advanced(BV_GZIP)

set(package_of_runtime libbvbaseutils${BV_ABI})
set(package_of_development libbvbaseutils-dev)
set(package_of_documentation libbvbaseutils-doc)

# The release of Debian's package and the maintainer stand in Debian's changelog.
file(STRINGS ${PROJECT_SOURCE_DIR}/packaging/debian/changelog changelog)
if(NOT "${changelog}" MATCHES "^bvbaseutils \\(${PROJECT_VERSION}-([0-9]+)\\).* -- ([^>]+>)  ")
  message(FATAL_ERROR "The first entry of packaging/debian/changelog is not that of version ${PROJECT_VERSION}.")
endif()
set(CPACK_DEBIAN_PACKAGE_RELEASE ${CMAKE_MATCH_1})
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${CMAKE_MATCH_2})

# What each package says of itself. The terms are those of LICENSE, in the form that Debian gives them. gzip leaves out
# name and time, so that the same text gives the same bytes.
file(READ LICENSE licence)
if(NOT licence MATCHES "Copyright \\(c\\) ([^\n]+)\n\n(.*)\n$")
  message(FATAL_ERROR "LICENSE does not say whose it is.")
endif()
string(REPLACE ", the" " the" BV_COPYRIGHT "${CMAKE_MATCH_1}")
string(REPLACE "\n" "\n " BV_TERMS " ${CMAKE_MATCH_2}")
string(REPLACE "\n \n" "\n .\n" BV_TERMS "${BV_TERMS}")
set(copyright ${PROJECT_BINARY_DIR}/copyright)
configure_file(packaging/debian/copyright.in ${copyright} @ONLY)
set(compressed ${PROJECT_BINARY_DIR}/changelog.Debian.gz)
execute_process(COMMAND ${BV_GZIP} -9nc ${PROJECT_SOURCE_DIR}/packaging/debian/changelog OUTPUT_FILE ${compressed}
  COMMAND_ERROR_IS_FATAL ANY)
foreach(component runtime development documentation)
  install(FILES ${copyright} ${compressed}
    DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/${package_of_${component}} COMPONENT ${component})
endforeach()

# The manual, in folders that its links expect.
set(manual ${CMAKE_INSTALL_DATADIR}/doc/${package_of_documentation}/manual)
install(FILES README.md CHANGELOG.md SECURITY.md DESTINATION ${manual} COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${manual} COMPONENT documentation)
if(EXISTS ${PROJECT_SOURCE_DIR}/build/docs/index.html) # the site that tools/docs makes
  install(DIRECTORY build/docs/ DESTINATION ${manual}/site COMPONENT documentation)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME bvbaseutils)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT ${CPACK_DEBIAN_PACKAGE_MAINTAINER})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "base utilities for 3D graphics and rendering")
set(CPACK_COMPONENTS_ALL runtime development documentation)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_SET_DESTDIR ON)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(about "Strings and exceptions, vectors, matrices, quaternions, boxes, spheres,
planes, rays and their intersections, samples and noise, as a renderer needs
them: with the same bits from every compiler, level and processor.")
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS OFF)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON) # only scripts are for running, whatever the copy of the sources says
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME ${package_of_runtime})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS ON) # what depends on the library when another package uses it
set(CPACK_DEBIAN_PACKAGE_GENERATE_SHLIBS_POLICY ">=")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${about}\n\nThis package has the shared library.")

set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME ${package_of_development})
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_DEPENDS
  "${package_of_runtime} (= ${PROJECT_VERSION}-${CPACK_DEBIAN_PACKAGE_RELEASE})")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SUGGESTS
  "${package_of_documentation}, gdb, libeigen3-dev, libfmt-dev, libglm-dev, libimath-dev, pkg-config")
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/debian/prerm)
set(CPACK_COMPONENT_DEVELOPMENT_DESCRIPTION
  "${about}\n\nThis package has the headers, the CMake package, the pkg-config file and\nwhat debuggers show.")

set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_SECTION doc)
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_NAME ${package_of_documentation})
set(CPACK_DEBIAN_DOCUMENTATION_PACKAGE_ARCHITECTURE all)
set(CPACK_COMPONENT_DOCUMENTATION_DESCRIPTION "${about}\n\nThis package has the manual and the examples.")

foreach(component RUNTIME DEVELOPMENT DOCUMENTATION)
  set(CPACK_DEBIAN_${component}_DESCRIPTION "${CPACK_COMPONENT_${component}_DESCRIPTION}")
endforeach()
include(CPack)
