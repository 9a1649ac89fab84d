# cmake -P script: the functions a shared library exports, compared with a list.
#   LIBRARY   the library (ELF, or a Windows DLL)
#   NM        nm, for an ELF library: its defined dynamic symbols
#   OBJDUMP   objdump, for a DLL: the names of its export table
#   EXPECTED  a file with one name a line
cmake_policy(VERSION 3.20)
if(LIBRARY MATCHES "\\.dll$")
  execute_process(COMMAND ${OBJDUMP} -p ${LIBRARY} OUTPUT_VARIABLE dump RESULT_VARIABLE failed)
  string(REGEX MATCHALL "\n\t\\[ *[0-9]+\\] [A-Za-z0-9_]+" rows "${dump}")
  set(names)
  foreach(row IN LISTS rows)
    string(REGEX REPLACE ".*\\] " "" name "${row}")
    list(APPEND names ${name})
  endforeach()
else()
  execute_process(COMMAND ${NM} -D --defined-only --format=just-symbols ${LIBRARY}
    OUTPUT_VARIABLE dump RESULT_VARIABLE failed)
  string(REGEX REPLACE "\n$" "" dump "${dump}")
  string(REPLACE "\n" ";" names "${dump}")
endif()
if(failed)
  message(FATAL_ERROR "cannot list the exports of ${LIBRARY}")
endif()
list(SORT names)
file(STRINGS ${EXPECTED} expected)
list(SORT expected)
if(NOT names STREQUAL expected)
  message(FATAL_ERROR "${LIBRARY} exports\n  ${names}\nnot\n  ${expected}")
endif()
