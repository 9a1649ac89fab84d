# Cross build for 64-bit Windows with Debian's MinGW-w64 (package g++-mingw-w64-x86-64-posix):
# the POSIX-threads flavour of the compiler, since std::thread and std::mutex need it.
# Programs built here run under Wine (scripts/wine-run.sh), so ctest and test discovery work
# on the build machine.
#
#   cmake -S . -B build-windows -G Ninja -DCMAKE_TOOLCHAIN_FILE=cmake/toolchain-mingw64.cmake
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)

set(VELKAPI_MINGW_TRIPLET x86_64-w64-mingw32)
set(CMAKE_C_COMPILER ${VELKAPI_MINGW_TRIPLET}-gcc-posix)
set(CMAKE_CXX_COMPILER ${VELKAPI_MINGW_TRIPLET}-g++-posix)
set(CMAKE_RC_COMPILER ${VELKAPI_MINGW_TRIPLET}-windres)

# Libraries and headers come from the MinGW tree only; the build machine's own are for Linux.
set(CMAKE_FIND_ROOT_PATH /usr/${VELKAPI_MINGW_TRIPLET})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# The folders of the compiler's runtime DLLs (C++ library, GCC support, threads), which Wine
# must find next to the programs' own DLLs.
set(velkapi_runtime_folders)
foreach(dll libstdc++-6.dll libgcc_s_seh-1.dll libwinpthread-1.dll)
  execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${dll}
    OUTPUT_VARIABLE dll_path OUTPUT_STRIP_TRAILING_WHITESPACE)
  if(IS_ABSOLUTE "${dll_path}" AND EXISTS "${dll_path}")
    get_filename_component(folder "${dll_path}" DIRECTORY)
    get_filename_component(folder "${folder}" REALPATH)
    list(APPEND velkapi_runtime_folders "--dll-folder=${folder}")
  endif()
endforeach()
list(REMOVE_DUPLICATES velkapi_runtime_folders)

get_filename_component(velkapi_wine_run "${CMAKE_CURRENT_LIST_DIR}/../scripts/wine-run.sh" ABSOLUTE)
set(CMAKE_CROSSCOMPILING_EMULATOR
  "${velkapi_wine_run};${velkapi_runtime_folders}")
