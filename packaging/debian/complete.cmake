# SPDX-License-Identifier: MIT
# Run by cpack before it packs: each package tells its licence and its changes, and manual pages and
# change logs are compressed without a time in them.
set(source ${CMAKE_CURRENT_LIST_DIR})
string(TIMESTAMP now "%a, %d %b %Y %H:%M:%S +0000" UTC) # or SOURCE_DATE_EPOCH

foreach(component IN ITEMS RUNTIME DEVELOPMENT TOOLS)
  set(package ${CPACK_DEBIAN_${component}_PACKAGE_NAME})
  string(TOLOWER ${component} stage)
  set(usr ${CPACK_TEMPORARY_DIRECTORY}/${stage}/usr)
  set(doc ${usr}/share/doc/${package})
  file(COPY ${source}/copyright DESTINATION ${doc}
    FILE_PERMISSIONS OWNER_READ OWNER_WRITE GROUP_READ WORLD_READ)
  file(WRITE ${doc}/changelog
    "confgrove (${CPACK_PACKAGE_VERSION}) unstable; urgency=medium\n\n"
    "  * CHANGELOG.md in libconfgrove-dev tells what has changed.\n\n"
    " -- ${CPACK_PACKAGE_CONTACT}  ${now}\n")
  file(GLOB pages ${usr}/share/man/man?/*.?)
  execute_process(COMMAND gzip -9n ${doc}/changelog ${pages} COMMAND_ERROR_IS_FATAL ANY)
endforeach()
# What lintian is to accept.
set(overrides usr/share/lintian/overrides)
# An example in the encoding of the format, which is CP1251.
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/development/${overrides}/libconfgrove-dev
  "libconfgrove-dev: national-encoding [usr/share/doc/libconfgrove-dev/examples/*]\n")
# cpack writes these scripts of itself, beside the trigger that does their work.
set(package ${CPACK_DEBIAN_RUNTIME_PACKAGE_NAME})
file(WRITE ${CPACK_TEMPORARY_DIRECTORY}/runtime/${overrides}/${package}
  "${package}: maintscript-calls-ldconfig [*]\n")
file(REMOVE ${CPACK_TEMPORARY_DIRECTORY}/development/usr/share/doc/libconfgrove-dev/LICENSE)
