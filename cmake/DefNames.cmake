# The exported names of a module-definition file: the first word of each line
# of its EXPORTS section, comments (";" on) left out. Shared by the check of
# the built library (ExportCheck.cmake) and of the interface (ExportList.cmake).
function(names_of_def file out)
  file(STRINGS ${file} lines)
  set(names "")
  set(in_exports OFF)
  foreach(line IN LISTS lines)
    string(REGEX REPLACE ";.*" "" line "${line}")
    string(STRIP "${line}" line)
    if(line STREQUAL "EXPORTS")
      set(in_exports ON)
    elseif(in_exports AND line MATCHES "^([A-Za-z_][A-Za-z0-9_]*)")
      list(APPEND names ${CMAKE_MATCH_1})
    endif()
  endforeach()
  set(${out} ${names} PARENT_SCOPE)
endfunction()
