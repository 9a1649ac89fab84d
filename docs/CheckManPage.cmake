# cmake -P script: renders the manual page PAGE with MAN and fails on any warning of the
# formatter (an unknown request, a line that cannot be set, ...).
execute_process(COMMAND ${MAN} --warnings=all -l ${PAGE}
  RESULT_VARIABLE result OUTPUT_VARIABLE page ERROR_VARIABLE warnings)
if(NOT result EQUAL 0 OR NOT warnings STREQUAL "")
  message(FATAL_ERROR "${PAGE} (exit ${result}):\n${warnings}")
endif()
if(NOT page MATCHES "velk diff|diff BEFORE AFTER")
  message(FATAL_ERROR "${PAGE} renders without the diff command:\n${page}")
endif()
