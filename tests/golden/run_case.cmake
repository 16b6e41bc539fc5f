# Runs the program on one stored case and compares all that it leaves, byte for byte.
#   cmake -D PROGRAM=... -D CASE=folder -D SAMPLES=folder -D WORK=folder -P run_case.cmake
# A program for Windows comes with -D RUNNER=..., which runs it here, and -D REGISTRY=..., which knows
# its settings.
#
# A case is a folder with
#   args        the arguments, one a line
#   inputs      optional: names in samples/ to copy into the working folder, one a line
#   outputs_of  optional: cases whose expected files are copied into it, one a line
#   input/      optional: files and folders to copy into it
#   settings    optional: the stored settings
#   stdin       optional: the standard input; without it there is none
#   expected/   every file that must be in the working folder afterwards, new or changed; all others
#               must be the inputs as they were
#   expected_of  instead of expected/: the case whose expected files these are, to the byte
#   settings_after  optional: the stored settings as the run must leave them
#   stdout, stderr, status

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})
file(MAKE_DIRECTORY ${WORK}/run ${WORK}/config/VexaSoft)
if(EXISTS ${CASE}/inputs)
  file(STRINGS ${CASE}/inputs names)
  foreach(name ${names})
    file(COPY ${SAMPLES}/${name} DESTINATION ${WORK}/run)
  endforeach()
endif()
if(EXISTS ${CASE}/outputs_of)
  file(STRINGS ${CASE}/outputs_of names)
  foreach(name ${names})
    file(COPY ${CASE}/../${name}/expected/ DESTINATION ${WORK}/run)
  endforeach()
endif()
if(EXISTS ${CASE}/input)
  file(COPY ${CASE}/input/ DESTINATION ${WORK}/run)
endif()
if(REGISTRY)
  set(settings ${WORK}/no_settings)
  if(EXISTS ${CASE}/settings)
    set(settings ${CASE}/settings)
  endif()
  execute_process(COMMAND ${RUNNER} ${REGISTRY} put ${settings} COMMAND_ERROR_IS_FATAL ANY)
elseif(EXISTS ${CASE}/settings)
  file(COPY_FILE ${CASE}/settings ${WORK}/config/VexaSoft/Campiva.ini)
endif()
file(GLOB_RECURSE before RELATIVE ${WORK}/run ${WORK}/run/*)
file(COPY ${WORK}/run/ DESTINATION ${WORK}/before)

file(STRINGS ${CASE}/args arguments ENCODING UTF-8)
set(input ${CASE}/stdin)
if(NOT EXISTS ${input})
  set(input ${WORK}/nothing)
  file(TOUCH ${input})
endif()
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
execute_process(COMMAND ${RUNNER} ${PROGRAM} ${arguments}
  WORKING_DIRECTORY ${WORK}/run
  INPUT_FILE ${input} OUTPUT_FILE ${WORK}/stdout ERROR_FILE ${WORK}/stderr RESULT_VARIABLE status)

set(expected_folder ${CASE}/expected)
if(EXISTS ${CASE}/expected_of)
  file(STRINGS ${CASE}/expected_of other)
  set(expected_folder ${CASE}/../${other}/expected)
endif()

set(failures "")
file(READ ${CASE}/status expected_status)
string(STRIP "${expected_status}" expected_status)
if(NOT "${status}" STREQUAL "${expected_status}")
  string(APPEND failures "status ${status}, expected ${expected_status}\n")
endif()

function(compare expected seen)
  execute_process(COMMAND ${CMAKE_COMMAND} -E compare_files ${expected} ${seen}
    RESULT_VARIABLE differ OUTPUT_QUIET ERROR_QUIET)
  if(differ)
    set(failures "${failures}${seen} differs from ${expected}\n" PARENT_SCOPE)
  endif()
endfunction()

compare(${CASE}/stdout ${WORK}/stdout)
compare(${CASE}/stderr ${WORK}/stderr)
if(EXISTS ${CASE}/settings_after AND REGISTRY)
  execute_process(COMMAND ${RUNNER} ${REGISTRY} compare ${CASE}/settings_after
    RESULT_VARIABLE differ ERROR_VARIABLE difference)
  if(differ)
    string(APPEND failures "the settings differ from ${CASE}/settings_after\n${difference}")
  endif()
elseif(EXISTS ${CASE}/settings_after)
  compare(${CASE}/settings_after ${WORK}/config/VexaSoft/Campiva.ini)
endif()
file(GLOB_RECURSE expected RELATIVE ${expected_folder} ${expected_folder}/*)
foreach(name ${expected})
  compare(${expected_folder}/${name} ${WORK}/run/${name})
endforeach()
foreach(name ${before})
  if(NOT name IN_LIST expected)
    compare(${WORK}/before/${name} ${WORK}/run/${name})
  endif()
endforeach()
file(GLOB_RECURSE after RELATIVE ${WORK}/run ${WORK}/run/*)
foreach(name ${after})
  if(NOT name IN_LIST before AND NOT name IN_LIST expected)
    string(APPEND failures "${name} was not to be left behind\n")
  endif()
endforeach()

if(failures)
  message(FATAL_ERROR "${failures}")
endif()
