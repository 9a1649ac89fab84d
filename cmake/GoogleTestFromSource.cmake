# GoogleTest for cross builds: Debian's libgtest-dev is built for the build machine only, so the
# sources Debian ships (package googletest, /usr/src/googletest) are built with the project's
# compiler. The targets get the names find_package(GTest) gives them.

set(VELKAPI_GOOGLETEST_SOURCE_DIR /usr/src/googletest CACHE PATH "GoogleTest's sources")
if(NOT EXISTS ${VELKAPI_GOOGLETEST_SOURCE_DIR}/googletest/CMakeLists.txt)
  message(FATAL_ERROR "GoogleTest sources not found in ${VELKAPI_GOOGLETEST_SOURCE_DIR} "
                      "(scripts/install-deps.sh windows installs the package googletest)")
endif()

# Test tools stay out of the installed package.
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${VELKAPI_GOOGLETEST_SOURCE_DIR}/googletest ${PROJECT_BINARY_DIR}/googletest
  EXCLUDE_FROM_ALL)

foreach(target gtest gtest_main)
  if(NOT TARGET GTest::${target})  # GoogleTest 1.11 and later make these names themselves
    add_library(GTest::${target} ALIAS ${target})
  endif()
endforeach()
