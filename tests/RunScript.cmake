# Runs one script through the scripted host and compares what it prints
# (standard output, then "exit N", then standard error) with the expected
# trace beside it. With KESTU_UPDATE_GOLDEN=1 in the environment the
# expected file is rewritten instead.
get_filename_component(dir ${SCRIPT} DIRECTORY)
get_filename_component(stem ${SCRIPT} NAME_WE)
set(expected_file ${dir}/${stem}.expected)
file(MAKE_DIRECTORY ${WORK_DIR})
execute_process(COMMAND ${SCRIPT_HOST} ${SCRIPT}
  WORKING_DIRECTORY ${WORK_DIR}
  OUTPUT_VARIABLE out ERROR_VARIABLE err RESULT_VARIABLE rc)
# Messages name the script by its path: keep only its name, so the
# expected traces do not depend on where the tree is checked out.
string(REPLACE "${dir}/" "" err "${err}")
string(REPLACE "${dir}/" "" out "${out}")
# A run-time error is a line of the trace; the line the host also writes
# on standard error, saying where it came from ("test.kss:4: set n.Value:
# error 6 ..."), is the host tests' to check.
string(REGEX REPLACE "[^\n]*:[0-9]+: [^\n]*: error [0-9]+ [^\n]*\n" "" err "${err}")
set(actual "${out}")
if(NOT rc EQUAL 0 OR NOT err STREQUAL "")
  string(APPEND actual "exit ${rc}\n${err}")
endif()
if("$ENV{KESTU_UPDATE_GOLDEN}" STREQUAL "1")
  file(WRITE ${expected_file} "${actual}")
  return()
endif()
if(NOT EXISTS ${expected_file})
  message(FATAL_ERROR "no expected trace ${expected_file}; output was:\n${actual}")
endif()
file(READ ${expected_file} expected)
if(NOT actual STREQUAL expected)
  file(WRITE ${WORK_DIR}/${stem}.actual "${actual}")
  execute_process(COMMAND diff -u ${expected_file} ${WORK_DIR}/${stem}.actual)
  message(FATAL_ERROR "trace differs from ${expected_file}")
endif()
