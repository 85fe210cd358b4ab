# Makes the linker's export map of the public header: every name that it declares with WIFIMGR_API.
#
#   cmake -D HEADER=... -D MAP=... -P export_map.cmake
#
# Unversioned, as the callers that exist were linked without versions. A declaration may go over several lines; the name
# is the last word before its parameters, dimensions or end.
file(READ ${HEADER} text)
string(REGEX REPLACE "#[^\n]*" "" text "${text}")
string(REGEX MATCHALL "\nWIFIMGR_API [^;]*" declarations "${text}")
set(names "")
foreach(declaration IN LISTS declarations)
  if(declaration MATCHES "^[^([]*[ *\n]([A-Za-z0-9_]+)[ \n]*([([].*)?$")
    list(APPEND names ${CMAKE_MATCH_1})
  else()
    message(FATAL_ERROR "${HEADER}: no name in${declaration}")
  endif()
endforeach()
list(LENGTH names count)
if(count EQUAL 0)
  message(FATAL_ERROR "${HEADER} declares nothing")
endif()
list(SORT names)
list(JOIN names ";\n    " lines)
file(WRITE ${MAP} "{\n  global:\n    ${lines};\n  local:\n    *;\n};\n")
