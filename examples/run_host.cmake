# SPDX-License-Identifier: MIT
# Runs host on a copy of tidewatch/ and compares what it prints and what it saves.
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/tidewatch DESTINATION ${WORK})
execute_process(COMMAND ${HOST} ${WORK}/tidewatch
  RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
if(NOT result EQUAL 0)
  message(FATAL_ERROR "host: result ${result}, output '${output}', errors '${errors}'")
endif()
foreach(line IN ITEMS "title: Tidewatch, south harbour" "smoothing: 0.25" "gauge: RG-0417"
    "level: 110" "server has limits" "lights: dim")
  if(NOT output MATCHES "${line}\n")
    message(FATAL_ERROR "host doesn't print '${line}':\n${output}")
  endif()
endforeach()

foreach(file IN ITEMS tidewatch.cfg network.cfg sensors.cfg)
  file(SHA256 ${EXAMPLES}/tidewatch/${file} old)
  file(SHA256 ${WORK}/tidewatch/${file} new)
  if(NOT old STREQUAL new)
    message(FATAL_ERROR "host has changed ${file}")
  endif()
endforeach()
file(READ ${WORK}/tidewatch/tidewatch-night.cfg saved)
foreach(text IN ITEMS "import \"night\"" "levels = .55,80,105,135. # nearer, for the night\n"
    "interval = 60\n\t\thold = @station.night.interval\n" "night_siren = \"off\"")
  if(NOT saved MATCHES "${text}")
    message(FATAL_ERROR "host doesn't save '${text}':\n${saved}")
  endif()
endforeach()
if(saved MATCHES "archive")
  message(FATAL_ERROR "host saves the section that it has removed:\n${saved}")
endif()
