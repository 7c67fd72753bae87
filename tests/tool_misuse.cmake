# oxl misused: each row is the arguments (separated by ','; - for none) and what the error
# stream must say; the exit status must be 2 and nothing go to the output.
#   cmake -DOXL=<oxl program> [-DEMULATOR=<program>] -P tool_misuse.cmake
set(rows
  "-|usage: oxl COMMAND"
  "nope|no command 'nope'"
  "negate|negate: takes one argument, got 0"
  "negate,1,2|negate: takes one argument, got 2"
  "negate,1e200|too large for a NUMBER"
  "negate,12abc|'12abc' is not a number: 'abc' after it"
  "compare,1|compare: takes two arguments, got 1"
  "compare,1,x|x: no number"
  "chars|chars: takes one argument, got 0"
  "chars,a,b|chars: takes one argument, got 2"
  "small|small: takes at least one argument, got 0"
  "small,1.5|'1.5' is not an integer"
  "shm,4096abc|'4096abc' is not an integer"
  "shm,63|SIZE from 64 to 16777216 bytes, not 63"
  "conv,2.5x|'2.5x' is not a number"
  "calc,1 % 2|expected one of"
  "tour,x|tour: takes no arguments, got 1"
  "date,hello|\"hello\" is no date-time under the profile's settings"
  "date,--short|--short needs a value"
  "date,a,b,c|takes TEXT and perhaps a PICTURE"
)
set(failures 0)
foreach(row IN LISTS rows)
  string(REPLACE "|" ";" parts "${row}")
  list(GET parts 0 args)
  list(GET parts 1 want)
  string(REPLACE "," ";" args "${args}")
  if(args STREQUAL "-")
    set(args "")
  endif()
  execute_process(COMMAND ${EMULATOR} ${OXL} ${args} RESULT_VARIABLE rc OUTPUT_VARIABLE out ERROR_VARIABLE err)
  string(FIND "${err}" "${want}" at)
  if(NOT rc EQUAL 2 OR at EQUAL -1 OR NOT out STREQUAL "")
    message(SEND_ERROR "oxl ${args}: expected exit 2 and \"${want}\" on stderr, got ${rc}, stderr \"${err}\", stdout \"${out}\"")
  endif()
endforeach()
foreach(help help --help)
  execute_process(COMMAND ${EMULATOR} ${OXL} ${help} RESULT_VARIABLE rc OUTPUT_VARIABLE out)
  if(NOT rc EQUAL 0 OR NOT out MATCHES "usage: oxl COMMAND")
    message(SEND_ERROR "oxl ${help}: expected exit 0 and the usage on stdout, got ${rc}")
  endif()
endforeach()
