# Warnings are errors on every compiler we build with (GCC, Clang, MinGW).
function(velkapi_warnings target)
  target_compile_options(${target} PRIVATE
    -Wall -Wextra -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wcast-qual
    -Wformat=2 -Wundef -Werror)
endfunction()
