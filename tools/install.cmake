# SPDX-License-Identifier: MIT
# Installs the tool, and the manual pages and completions that it prints of itself.
include(GNUInstallDirs)
install(TARGETS confgrove_tool RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR} COMPONENT tools)
if(BUILD_SHARED_LIBS AND NOT WIN32)
  # The library is found from the place of the tool, here and where it is installed; so nothing in
  # the file tells where it was built.
  file(RELATIVE_PATH to_library ${CMAKE_INSTALL_FULL_BINDIR} ${CMAKE_INSTALL_FULL_LIBDIR})
  set_target_properties(confgrove_tool PROPERTIES
    BUILD_RPATH_USE_ORIGIN ON
    INSTALL_RPATH $<IF:$<PLATFORM_ID:Darwin>,@loader_path,$ORIGIN>/${to_library})
endif()

if(CMAKE_CROSSCOMPILING AND NOT CMAKE_CROSSCOMPILING_EMULATOR)
  message(STATUS "The tool can't run here: its manual pages and completions are left out")
  return()
endif()
set(pages ${CMAKE_CURRENT_BINARY_DIR}/pages)
add_custom_command(OUTPUT pages.stamp
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${pages} # a page of a command that is gone
  COMMAND ${CMAKE_COMMAND} -E make_directory ${pages}
  COMMAND confgrove_tool --describe ${pages}
  COMMAND ${CMAKE_COMMAND} -E touch pages.stamp
  DEPENDS confgrove_tool
  VERBATIM)
add_custom_target(confgrove_pages ALL DEPENDS pages.stamp)
install(DIRECTORY ${pages}/man1 DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT tools)

# Where the shells look for what programs bring along.
set(CONFGROVE_ZSH_DIR ${CMAKE_INSTALL_DATADIR}/zsh/site-functions
  CACHE STRING "Directory for the completion of zsh")
install(FILES ${pages}/bash COMPONENT tools RENAME confgrove
  DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
install(FILES ${pages}/zsh COMPONENT tools RENAME _confgrove DESTINATION ${CONFGROVE_ZSH_DIR})
install(FILES ${pages}/fish COMPONENT tools RENAME confgrove.fish
  DESTINATION ${CMAKE_INSTALL_DATADIR}/fish/vendor_completions.d)

# confgrove.5 is docs/format.md.
find_program(LOWDOWN_PROGRAM lowdown)
if(LOWDOWN_PROGRAM)
  set(format_page ${CMAKE_CURRENT_BINARY_DIR}/man5/confgrove.5)
  add_custom_command(OUTPUT ${format_page}
    COMMAND ${CMAKE_COMMAND}
      -D LOWDOWN=${LOWDOWN_PROGRAM}
      -D SOURCE=${PROJECT_SOURCE_DIR}/docs/format.md
      -D PAGE=${format_page}
      -D VERSION=${PROJECT_VERSION}
      -P ${CMAKE_CURRENT_SOURCE_DIR}/format_page.cmake
    DEPENDS ${PROJECT_SOURCE_DIR}/docs/format.md format_page.cmake
    VERBATIM)
  add_custom_target(confgrove_format_page ALL DEPENDS ${format_page})
  install(FILES ${format_page} DESTINATION ${CMAKE_INSTALL_MANDIR}/man5 COMPONENT tools)
else()
  message(STATUS "lowdown isn't there: the manual page confgrove(5) is left out")
endif()
