# cmake -P script: install the built project into WORK_DIR/prefix, then configure, build and run
# the consumer project against it: its program "addon", or with RUN_TESTS its own tests (ctest,
# CTEST). For a cross build, TOOLCHAIN_FILE is its toolchain, EMULATOR ("|"-separated) the command
# that runs its programs and GOOGLETEST_SOURCE_DIR the sources its tests build GoogleTest from.
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
             lib/pkgconfig/velkapi.pc bin/velk${EXECUTABLE_SUFFIX} share/man/man1/velk.1)
  if(NOT EXISTS ${prefix}/${file})
    message(FATAL_ERROR "not installed: ${file}")
  endif()
endforeach()

set(options -DCMAKE_PREFIX_PATH=${prefix} "-DCMAKE_CXX_FLAGS=${CXX_FLAGS}"
  -DCMAKE_COMPILE_WARNING_AS_ERROR=ON)
if(TOOLCHAIN_FILE)
  # A cross build looks for packages only in the target's tree: name the package's folder.
  list(APPEND options -DCMAKE_TOOLCHAIN_FILE=${TOOLCHAIN_FILE} -DVelkApi_DIR=${prefix}/lib/cmake/VelkApi
    -DGOOGLETEST_SOURCE_DIR=${GOOGLETEST_SOURCE_DIR})
endif()
run(${CMAKE_COMMAND} -S ${CONSUMER_DIR} -B ${WORK_DIR}/build -G ${GENERATOR} ${options})
run(${CMAKE_COMMAND} --build ${WORK_DIR}/build)
# Windows finds a program's DLLs in its own folder: put the installed ones there, as a user would.
file(GLOB dlls ${prefix}/bin/*.dll)
if(dlls)
  file(COPY ${dlls} DESTINATION ${WORK_DIR}/build)
endif()
if(RUN_TESTS)
  run(${CTEST} --test-dir ${WORK_DIR}/build --output-on-failure)
  if(NOT last_output MATCHES "100% tests passed")
    message(FATAL_ERROR "the consumer's tests did not all pass:\n${last_output}")
  endif()
  return()
endif()
string(REPLACE "|" ";" emulator "${EMULATOR}")
run(${emulator} ${WORK_DIR}/build/addon${EXECUTABLE_SUFFIX})
if(NOT last_output STREQUAL "read: 4 1 1 1\nnew line: hello\nkind: DRILLING\n")
  message(FATAL_ERROR "unexpected output:\n${last_output}")
endif()
