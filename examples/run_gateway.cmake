# Runs gateway on a sound file, which it saves with one change, and on a faulty one.
file(REMOVE_RECURSE ${WORK})
file(COPY ${EXAMPLES}/gateway/ DESTINATION ${WORK})

function(run expected_result arguments expected_output expected_errors)
  execute_process(COMMAND ${HOST} ${arguments} WORKING_DIRECTORY ${WORK}
    RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE errors)
  if(NOT result EQUAL expected_result OR NOT output STREQUAL expected_output OR
      NOT errors STREQUAL expected_errors)
    message(FATAL_ERROR "gateway ${arguments}: result ${result}, output\n${output}errors\n${errors}")
  endif()
endfunction()

run(0 gateway.cfg "port 8443, fast, 120 requests a minute
main: 10.0.0.5:8080, weight 3
spare: 10.0.0.6:80, weight 1
" "")
file(READ ${EXAMPLES}/gateway/gateway.cfg old)
file(READ ${WORK}/gateway.cfg new)
string(REPLACE "requests = 120" "requests = 240" expected "${old}")
if(NOT new STREQUAL expected)
  message(FATAL_ERROR "gateway has changed more or less than the requests:\n${new}")
endif()

file(READ ${EXAMPLES}/gateway/faults.txt faults)
run(1 faulty.cfg "" "${faults}")
run(1 none.cfg "" "none.cfg:0: the file can't be opened\n")

execute_process(COMMAND ${HOST} --sample OUTPUT_FILE ${WORK}/sample.cfg)
execute_process(COMMAND ${HOST} sample.cfg WORKING_DIRECTORY ${WORK} ERROR_VARIABLE errors)
set(expected "sample.cfg:29:3: error: upstreams.name.host: wanted a text, not empty, found \"\"")
if(NOT errors STREQUAL "${expected}\n\t\thost = \"\"\n\t\t^^^^\n")
  message(FATAL_ERROR "the sample lacks more or less than a host:\n${errors}")
endif()
