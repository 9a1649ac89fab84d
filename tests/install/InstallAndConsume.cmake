# cmake -P script: install the built project into WORK_DIR/prefix, then configure, build and run
# the consumer project against it.
file(REMOVE_RECURSE ${WORK_DIR})
set(prefix ${WORK_DIR}/prefix)

function(run)
  execute_process(COMMAND ${ARGN} RESULT_VARIABLE result OUTPUT_VARIABLE out ERROR_VARIABLE out)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "failed (${result}): ${ARGN}\n${out}")
  endif()
  set(last_output "${out}" PARENT_SCOPE)
endfunction()

run(${CMAKE_COMMAND} --install ${BUILD_DIR} --prefix ${prefix})
foreach(file include/velkapi/VelkApi.h include/velkapi/MillTurnVdm.h
             lib/cmake/VelkApi/VelkApiConfig.cmake lib/cmake/VelkApi/VelkApiConfigVersion.cmake
             lib/pkgconfig/velkapi.pc)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build -G ${GENERATOR}
    -DCMAKE_PREFIX_PATH=${prefix} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}")
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
run(${WORK_DIR}/build/addon)
if(NOT last_output STREQUAL "read: 4 1 1 1\nnew line: hello\nkind: DRILLING\n")
  message(FATAL_ERROR "unexpected output:\n${last_output}")
endif()
