# Writes the linker's version script from the export list (.def): the names
# under EXPORTS are global, everything else local.
#   cmake -DIN=oxlrt31.def -DOUT=oxlrt31.map -P ExportMap.cmake
file(READ ${IN} text)
string(REGEX REPLACE ";[^\n]*" "" text "${text}") # comments, before ';' splits the list
string(REPLACE "\n" ";" lines "${text}")
set(names "")
set(in_exports OFF)
foreach(line IN LISTS lines)
  string(STRIP "${line}" line)
  if(line STREQUAL "EXPORTS")
    set(in_exports ON)
  elseif(in_exports AND line MATCHES "^([A-Za-z_][A-Za-z0-9_]*)")
    string(APPEND names "    ${CMAKE_MATCH_1};\n")
  endif()
endforeach()
file(WRITE ${OUT} "{\n  global:\n${names}  local: *;\n};\n")
