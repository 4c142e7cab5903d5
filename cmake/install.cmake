# SPDX-License-Identifier: MIT
# What is installed, and where. Components: runtime (the shared library), development, tools and
# documentation.
include(CMakePackageConfigHelpers)
set(package_dir ${CMAKE_INSTALL_LIBDIR}/cmake/confgrove)

# The library.
install(TARGETS confgrove EXPORT confgroveTargets
  RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT runtime
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime
    NAMELINK_COMPONENT development
  ARCHIVE DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT development)
install(DIRECTORY include/confgrove DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}
  COMPONENT development FILES_MATCHING PATTERN *.h)

# For CMake.
install(EXPORT confgroveTargets NAMESPACE confgrove:: DESTINATION ${package_dir}
  COMPONENT development)
configure_package_config_file(cmake/confgroveConfig.cmake.in
  ${CMAKE_CURRENT_BINARY_DIR}/confgroveConfig.cmake INSTALL_DESTINATION ${package_dir})
# Before 1.0 a new minor version may change the interface.
write_basic_package_version_file(${CMAKE_CURRENT_BINARY_DIR}/confgroveConfigVersion.cmake
  COMPATIBILITY SameMinorVersion)
install(FILES
  ${CMAKE_CURRENT_BINARY_DIR}/confgroveConfig.cmake
  ${CMAKE_CURRENT_BINARY_DIR}/confgroveConfigVersion.cmake
  DESTINATION ${package_dir} COMPONENT development)

# For pkg-config. The prefix is found from the place of the file, so that it can be moved.
if(IS_ABSOLUTE ${CMAKE_INSTALL_LIBDIR})
  set(pc_prefix ${CMAKE_INSTALL_PREFIX})
else()
  file(RELATIVE_PATH pc_up /${CMAKE_INSTALL_LIBDIR}/pkgconfig /)
  string(REGEX REPLACE "/$" "" pc_up "${pc_up}")
  set(pc_prefix "\${pcfiledir}/${pc_up}")
endif()
set(pc_libdir "\${prefix}")
cmake_path(APPEND pc_libdir ${CMAKE_INSTALL_LIBDIR})
set(pc_includedir "\${prefix}")
cmake_path(APPEND pc_includedir ${CMAKE_INSTALL_INCLUDEDIR})
set(pc_definitions)
if(NOT BUILD_SHARED_LIBS)
  set(pc_definitions " -DCONFGROVE_STATIC")
endif()
configure_file(cmake/confgrove.pc.in ${CMAKE_CURRENT_BINARY_DIR}/confgrove.pc @ONLY)
install(FILES ${CMAKE_CURRENT_BINARY_DIR}/confgrove.pc
  DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT development)

# The links between the pages hold, for they stand as in the sources.
install(FILES README.md CHANGELOG.md CONTRIBUTING.md LICENSE SECURITY.md
  DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation)
install(DIRECTORY docs examples DESTINATION ${CMAKE_INSTALL_DOCDIR} COMPONENT documentation
  FILES_MATCHING PATTERN *.md PATTERN *.cpp PATTERN *.h PATTERN *.cfg PATTERN CMakeLists.txt)

# Takes away what the last installation from this build directory has put down, all components.
if(PROJECT_IS_TOP_LEVEL)
  add_custom_target(uninstall COMMAND ${CMAKE_COMMAND}
    -D BUILD=${CMAKE_CURRENT_BINARY_DIR} -P ${CMAKE_CURRENT_SOURCE_DIR}/cmake/uninstall.cmake
    VERBATIM)
  include(packaging/debian/cpack.cmake)
endif()
