# A port for vcpkg, as an overlay: vcpkg install bvbaseutils --overlay-ports=packaging/vcpkg
#
# A test of the library configures, builds and installs with the options below, shared and static, and finds the package.
# Not run: vcpkg itself, and so its functions, the copy of the sources, and what it makes of the installed files.
set(SOURCE_PATH "${CMAKE_CURRENT_LIST_DIR}/../../..")

vcpkg_cmake_configure(
  SOURCE_PATH "${SOURCE_PATH}"
  OPTIONS
    -DBV_BUILD_TESTS=OFF
)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/BvBaseUtils)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE "${CURRENT_PACKAGES_DIR}/debug/include" "${CURRENT_PACKAGES_DIR}/debug/share")
vcpkg_install_copyright(FILE_LIST "${SOURCE_PATH}/LICENSE")
