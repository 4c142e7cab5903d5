# SPDX-License-Identifier: MIT
# Unchecked: CI doesn't have vcpkg. An overlay port, which builds the sources that it stands in:
#   vcpkg install confgrove --overlay-ports=packaging/vcpkg
set(SOURCE_PATH ${CMAKE_CURRENT_LIST_DIR}/../..)

vcpkg_cmake_configure(SOURCE_PATH ${SOURCE_PATH} OPTIONS
  -DCONFGROVE_BUILD_TESTS=OFF
  -DCONFGROVE_BUILD_TOOL=OFF
  -DCONFGROVE_BUILD_EXAMPLES=OFF)
vcpkg_cmake_install()
vcpkg_cmake_config_fixup(CONFIG_PATH lib/cmake/confgrove)
vcpkg_fixup_pkgconfig()
file(REMOVE_RECURSE ${CURRENT_PACKAGES_DIR}/debug/include ${CURRENT_PACKAGES_DIR}/debug/share)
vcpkg_install_copyright(FILE_LIST ${SOURCE_PATH}/LICENSE)
