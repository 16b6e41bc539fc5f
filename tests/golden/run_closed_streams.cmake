# Runs the program without its standard streams: what it would print may not get into its files.
#   cmake -D PROGRAM=... -D SAMPLES=folder -D WORK=folder -P run_closed_streams.cmake

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})
file(WRITE ${WORK}/commands
  "1011\n1\n1003=villanueva_dibujos_con_faltas/poligonos.txt\n1005=no_hay.TOP\n1\n")
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
foreach(streams "> stdout 2> stderr" ">&- 2>&-" "2>&-")
  file(COPY ${SAMPLES}/villanueva_dibujos_con_faltas DESTINATION ${WORK})
  execute_process(COMMAND sh -c "exec ${PROGRAM} < commands ${streams}" WORKING_DIRECTORY ${WORK}
    RESULT_VARIABLE status)
  if(NOT status EQUAL 1) # the sheets are missing
    message(FATAL_ERROR "with ${streams}, status ${status}")
  endif()
  foreach(extension CSP ERR)
    set(file ${WORK}/villanueva_dibujos_con_faltas/045127.${extension})
    file(SHA256 ${file} sum)
    if(NOT DEFINED sum_${extension})
      set(sum_${extension} ${sum})
    elseif(NOT sum STREQUAL sum_${extension})
      message(FATAL_ERROR "with ${streams}, ${file} differs")
    endif()
  endforeach()
  file(REMOVE_RECURSE ${WORK}/villanueva_dibujos_con_faltas)
endforeach()
