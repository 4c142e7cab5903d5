# SPDX-License-Identifier: MIT
# Runs quickstart on a copy of taste.cfg and compares what it prints and what it saves.
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/taste.cfg DESTINATION ${WORK})
execute_process(COMMAND ${HOST} ${WORK}/taste.cfg
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0 OR NOT output STREQUAL "log to /var/log/taste.log\n" OR NOT errors STREQUAL "")
  message(FATAL_ERROR "quickstart: result ${result}, output '${output}', errors '${errors}'")
endif()

file(READ ${EXAMPLES}/taste.cfg old)
file(READ ${WORK}/taste.cfg new)
if(NOT old MATCHES "port = 8080 " OR NOT new MATCHES "port = 8081 ")
  message(FATAL_ERROR "quickstart: the port isn't one higher in what was saved:\n${new}")
endif()
