# Every warning we ask for is worth fixing, on every compiler we build with (GCC, Clang, MinGW).
# Our scripts and CI turn VELKAPI_WARNINGS_AS_ERRORS on, so that no warning gets in; it is off by
# default, so that a user's or a packager's build with a newer compiler does not break on a
# warning that compiler has newly learnt.
option(VELKAPI_WARNINGS_AS_ERRORS "Treat compiler warnings as errors" OFF)

function(velkapi_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wformat=2 -Wundef)
  if(VELKAPI_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()
