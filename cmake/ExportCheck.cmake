# Fails unless the built library exports exactly the names of the export list
# (.def): each of them, by its undecorated name, and nothing else.
#   cmake -DLIB=oxlrt31.dll|liboxlrt31.so -DDEF=oxlrt31.def -DTOOL=objdump|nm -P ExportCheck.cmake
include(${CMAKE_CURRENT_LIST_DIR}/DefNames.cmake)
names_of_def(${DEF} listed)

if(LIB MATCHES "\\.dll$")
  # objdump -p: the rows "[ordinal] name" of the export name table.
  execute_process(COMMAND ${TOOL} -p ${LIB} OUTPUT_VARIABLE out COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "\n[\t ]+\\[ *[0-9]+\\] [A-Za-z_][A-Za-z0-9_@]*" rows "${out}")
  set(pattern "\\] ([A-Za-z_][A-Za-z0-9_@]*)$")
else()
  # nm -D: the global symbols the shared object defines.
  execute_process(COMMAND ${TOOL} -D --defined-only ${LIB} OUTPUT_VARIABLE out COMMAND_ERROR_IS_FATAL ANY)
  string(REGEX MATCHALL "\n[0-9a-f]+ [A-Z] [A-Za-z_][A-Za-z0-9_@.]*" rows "\n${out}")
  set(pattern " ([A-Za-z_][A-Za-z0-9_@.]*)$")
endif()
set(exported "")
foreach(row IN LISTS rows)
  if(row MATCHES "${pattern}")
    list(APPEND exported ${CMAKE_MATCH_1})
  endif()
endforeach()

set(missing ${listed})
list(REMOVE_ITEM missing ${exported})
set(extra ${exported})
list(REMOVE_ITEM extra ${listed})
list(LENGTH listed n)
if(missing OR extra OR n LESS 1)
  message(FATAL_ERROR "${LIB}: exports differ from ${DEF} (${n} names listed)\n"
                      "  listed, not exported: ${missing}\n  exported, not listed: ${extra}")
endif()
message(STATUS "${LIB}: the ${n} names of ${DEF}, and no other")
