# cmake -P script: runs velk several times in a folder of its own and checks each run.
#   VELK        the program, after the command that runs it when that is needed (Wine)
#   WORK        the folder, emptied first, that every run works in
#   FIXTURES    a folder whose content is copied into WORK first
#   PROJECT     a project file copied into WORK as p.json
#   STEPS       the number of runs; for run i:
#     STEP<i>            its arguments
#     STEP<i>_EXPECTED   a file its standard output must equal byte for byte
#     STEP<i>_EXIT       its exit code (default 0)
#     STEP<i>_ERROR      its standard error, one line; {semicolon} stands for ";"
#   UNCHANGED   a file of WORK that must be byte for byte the same after the runs
#   SAME        pairs "<file of WORK>=<file>" that must be byte for byte equal; a relative second
#               file is in WORK too
# Lists are separated by "|", since ctest splits arguments at ";".
string(REPLACE "|" ";" VELK "${VELK}")
file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK})
file(COPY ${FIXTURES}/ DESTINATION ${WORK})
configure_file(${PROJECT} ${WORK}/p.json COPYONLY)
if(DEFINED UNCHANGED)
  file(SHA256 ${WORK}/${UNCHANGED} before)
endif()

function(expect_same what file expected_file)
  file(READ ${file} text)
  file(READ ${expected_file} expected)
  if(NOT text STREQUAL expected)
    message(FATAL_ERROR "${what} differs from ${expected_file}:\n${text}")
  endif()
endfunction()

foreach(i RANGE 1 ${STEPS})
  string(REPLACE "|" ";" arguments "${STEP${i}}")
  execute_process(COMMAND ${VELK} ${arguments} WORKING_DIRECTORY ${WORK}
    RESULT_VARIABLE exit OUTPUT_VARIABLE out ERROR_VARIABLE err)
  if(NOT DEFINED STEP${i}_EXIT)
    set(STEP${i}_EXIT 0)
  endif()
  if(NOT exit EQUAL STEP${i}_EXIT)
    message(FATAL_ERROR "run ${i} (${arguments}): exit code ${exit}, expected ${STEP${i}_EXIT}\n${out}\n${err}")
  endif()
  if(DEFINED STEP${i}_EXPECTED)
    file(WRITE ${WORK}/run-${i}.out "${out}")
    expect_same("run ${i}'s output" ${WORK}/run-${i}.out ${STEP${i}_EXPECTED})
  endif()
  string(REPLACE "{semicolon}" ";" expected_error "${STEP${i}_ERROR}")
  if(DEFINED STEP${i}_ERROR AND NOT err STREQUAL "${expected_error}\n")
    message(FATAL_ERROR "run ${i}: standard error\n${err}expected\n${expected_error}")
  endif()
endforeach()

if(DEFINED UNCHANGED)
  file(SHA256 ${WORK}/${UNCHANGED} after)
  if(NOT before STREQUAL after)
    message(FATAL_ERROR "${UNCHANGED} was changed")
  endif()
endif()
string(REPLACE "|" ";" SAME "${SAME}")
foreach(pair IN LISTS SAME)
  string(REPLACE "=" ";" files "${pair}")
  list(GET files 0 file)
  list(GET files 1 expected_file)
  if(NOT IS_ABSOLUTE ${expected_file})
    set(expected_file ${WORK}/${expected_file})
  endif()
  expect_same(${file} ${WORK}/${file} ${expected_file})
endforeach()
