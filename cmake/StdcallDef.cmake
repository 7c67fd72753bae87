# Writes the i686 module definition: every function export of the plain list
# with its __stdcall decoration (Name@bytes) as found in the objects, so that
# --kill-at exports it undecorated and dlltool can make an import library
# whose symbols match what i686 hosts compile against.
#   cmake -DNM=... -DIN=plain.def -DOUT=decorated.def -DOBJS=a.obj|b.obj -P StdcallDef.cmake
string(REPLACE "|" ";" objects "${OBJS}")
execute_process(COMMAND ${NM} -g --defined-only ${objects} OUTPUT_VARIABLE symbols RESULT_VARIABLE rc)
if(NOT rc EQUAL 0)
  message(FATAL_ERROR "nm failed on the library's objects")
endif()
file(STRINGS "${IN}" lines)
set(out "")
foreach(line IN LISTS lines)
  if(line MATCHES "^[ \t]+([A-Za-z_][A-Za-z0-9_]*)[ \t]*$")
    set(name "${CMAKE_MATCH_1}")
    if(symbols MATCHES "[ \t]_${name}(@[0-9]+)\n")
      set(line "    ${name}${CMAKE_MATCH_1}")
    elseif(NOT symbols MATCHES "[ \t]_${name}\n")
      message(FATAL_ERROR "export ${name} is not defined by the library's objects")
    endif()
  endif()
  string(APPEND out "${line}\n")
endforeach()
file(WRITE "${OUT}.tmp" "${out}")
file(COPY_FILE "${OUT}.tmp" "${OUT}" ONLY_IF_DIFFERENT)
