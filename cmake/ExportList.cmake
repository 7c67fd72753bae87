# Checks that the library's interface agrees in its three places: the list of
# exports (resources/exports.txt), the export list the builds link with
# (oxlrt31.def) and the public headers (functions declared OXLAPI or
# OXLCALLBACK, data declared OXLDATA).
#   cmake -DLIST=exports.txt -DDEF=oxlrt31.def -DHEADERS=include/oxlrt31 -P ExportList.cmake
# Fails on a name exported but not listed, or exported but not declared, or
# declared but not exported, or listed but not exported.

include(${CMAKE_CURRENT_LIST_DIR}/DefNames.cmake)

function(names_of_list file out)
  file(STRINGS ${file} lines)
  set(names "")
  foreach(line IN LISTS lines)
    string(REGEX REPLACE "#.*" "" line "${line}")
    string(STRIP "${line}" line)
    if(line MATCHES "^[A-Za-z_][A-Za-z0-9_]*$")
      list(APPEND names ${line})
    elseif(NOT line STREQUAL "")
      message(FATAL_ERROR "${file}: not a name: '${line}'")
    endif()
  endforeach()
  set(${out} ${names} PARENT_SCOPE)
endfunction()


# Declarations: "OXLAPI Name(", "OXLCALLBACK Name(" and "OXLDATA extern Type Name;"
# (a typedef of a callback, "(OXLCALLBACK* Name)", is not one).
function(names_of_headers dir out)
  file(GLOB headers ${dir}/*.h)
  set(names "")
  foreach(header IN LISTS headers)
    file(READ ${header} text)
    string(REGEX MATCHALL "(OXLAPI|OXLCALLBACK)[ \t\r\n]+[A-Za-z_][A-Za-z0-9_]*[ \t]*\\(" calls "${text}")
    string(REGEX MATCHALL "OXLDATA[ \t]+extern[^;(]*[ *][A-Za-z_][A-Za-z0-9_]*;" data "${text}")
    foreach(hit IN LISTS calls data) # a ";" ends a list item: the data names end their items
      if(hit MATCHES "([A-Za-z_][A-Za-z0-9_]*)[ \t]*[(;]?$")
        list(APPEND names ${CMAKE_MATCH_1})
      endif()
    endforeach()
  endforeach()
  set(${out} ${names} PARENT_SCOPE)
endfunction()

# The items of `a` that `b` lacks.
function(without a b out)
  set(rest ${${a}})
  if(${b})
    list(REMOVE_ITEM rest ${${b}})
  endif()
  set(${out} ${rest} PARENT_SCOPE)
endfunction()

names_of_list(${LIST} listed)
names_of_def(${DEF} exported)
names_of_headers(${HEADERS} declared)

set(twice ${listed})
list(REMOVE_DUPLICATES twice)
list(LENGTH listed n_listed)
list(LENGTH twice n_distinct)

without(exported listed stray)         # exported, never promised
without(exported declared undeclared)  # exported, no host can call it
without(declared exported unexported)  # declared, the library doesn't export it
without(listed exported missing)       # promised, not exported

list(LENGTH exported n_exported)
message(STATUS "${n_listed} names listed, ${n_exported} exported and declared")
set(failed "")
if(NOT n_listed EQUAL n_distinct)
  string(APPEND failed "\n  listed twice in ${LIST}")
endif()
foreach(kind stray undeclared unexported missing)
  if(${kind})
    string(REPLACE ";" " " text "${${kind}}")
    string(APPEND failed "\n  ${kind}: ${text}")
  endif()
endforeach()
if(failed)
  message(FATAL_ERROR "the interface disagrees (stray: exported, not listed; undeclared: exported, in no "
                      "public header; unexported: declared, not in ${DEF}):${failed}")
endif()
