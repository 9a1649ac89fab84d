# GoogleTest for cross builds: Debian's libgtest-dev is built for the build machine only, so the
# sources Debian ships (package googletest, /usr/src/googletest) are built with the project's
# compiler. The targets get the names find_package(GTest) gives them.

find_path(VELKAPI_GOOGLETEST_SOURCE_DIR NAMES googletest/CMakeLists.txt
  PATHS /usr/src/googletest /usr/src/gtest/.. NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
if(NOT VELKAPI_GOOGLETEST_SOURCE_DIR)
  message(FATAL_ERROR "GoogleTest sources not found in /usr/src/googletest "
                      "(scripts/install-deps.sh windows installs the package googletest)")
endif()

set(BUILD_GMOCK OFF CACHE BOOL "" FORCE)
set(INSTALL_GTEST OFF CACHE BOOL "" FORCE)
add_subdirectory(${VELKAPI_GOOGLETEST_SOURCE_DIR}/googletest ${PROJECT_BINARY_DIR}/googletest
  EXCLUDE_FROM_ALL)

foreach(target gtest gtest_main)
  if(NOT TARGET GTest::${target})  # GoogleTest 1.11 and later make these names themselves
    add_library(GTest::${target} ALIAS ${target})
  endif()
endforeach()
