# SPDX-License-Identifier: MIT
# Debian packages: cpack -G DEB in a build directory of the preset debian, see scripts/check-debian.
# One for hosts to run with, one to build hosts, one for the tool.
set(CPACK_PACKAGE_NAME confgrove)
set(CPACK_PACKAGE_VENDOR "the confgrove authors")
set(CONFGROVE_PACKAGER "the confgrove authors <confgrove@confgrove.invalid>"
  CACHE STRING "Name and address of who makes the packages")
set(CPACK_PACKAGE_CONTACT ${CONFGROVE_PACKAGER})
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/complete.cmake)

set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_DEBIAN_ENABLE_COMPONENT_DEPENDS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS_PRIVATE_DIRS ${PROJECT_BINARY_DIR})

set(so_version ${PROJECT_VERSION_MAJOR}.${PROJECT_VERSION_MINOR})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libconfgrove${so_version})
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_NAME libconfgrove-dev)
set(CPACK_DEBIAN_DEVELOPMENT_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME confgrove)
set(CPACK_DEBIAN_TOOLS_PACKAGE_SECTION utils)
foreach(package IN ITEMS RUNTIME DEVELOPMENT TOOLS)
  set(CPACK_DEBIAN_${package}_PACKAGE_PRIORITY optional)
endforeach()
# What depends on the library, and what is to be done when it comes.
file(WRITE ${PROJECT_BINARY_DIR}/control/shlibs
  "libconfgrove ${so_version} libconfgrove${so_version} (>= ${PROJECT_VERSION})\n")
file(WRITE ${PROJECT_BINARY_DIR}/control/triggers "activate-noawait ldconfig\n")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA
  ${PROJECT_BINARY_DIR}/control/shlibs ${PROJECT_BINARY_DIR}/control/triggers)

set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "embeddable configuration library")
set(CPACK_DEBIAN_RUNTIME_DESCRIPTION "confgrove reads files of nested, named sections, answers typed questions
by path, takes changes and saves them. This is the shared library.")
set(CPACK_DEBIAN_DEVELOPMENT_DESCRIPTION "Headers, documentation and examples: what it takes to build a program
with confgrove, by CMake or pkg-config.")
set(CPACK_DEBIAN_TOOLS_DESCRIPTION "The command-line tool: it reads, checks and changes the configuration
files of programs that use confgrove, without losing a setting.")
set(CPACK_COMPONENTS_GROUPING ONE_PER_GROUP)
include(CPack)
cpack_add_component_group(runtime)
cpack_add_component_group(development)
cpack_add_component_group(tools)
cpack_add_component(runtime GROUP runtime)
cpack_add_component(development GROUP development DEPENDS runtime)
cpack_add_component(documentation GROUP development)
cpack_add_component(tools GROUP tools DEPENDS runtime)
