# Installs the program into an empty folder and looks for what a Linux desktop expects of it.
#   cmake -D BUILD=folder -D WORK=folder -P run_install.cmake

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix ${WORK}/usr
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
foreach(file
    bin/campiva
    bin/campiva-gui
    bin/campiva-informe
    share/applications/campiva.desktop
    share/campiva/campiva.chm
    share/icons/hicolor/scalable/apps/campiva.svg
    share/man/es/man1/campiva-gui.1
    share/man/es/man1/campiva-informe.1
    share/man/es/man1/campiva.1
    share/man/man1/campiva-gui.1
    share/man/man1/campiva-informe.1
    share/man/man1/campiva.1)
  if(NOT EXISTS ${WORK}/usr/${file})
    message(FATAL_ERROR "${file} isn't installed")
  endif()
endforeach()

# The installed program finds its help: the manual, and the text of a control.
file(WRITE ${WORK}/commands "1\n? 1013\n57670\n")
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
execute_process(COMMAND ${WORK}/usr/bin/campiva INPUT_FILE ${WORK}/commands
  OUTPUT_VARIABLE seen ERROR_VARIABLE complaints RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR complaints OR NOT seen MATCHES "Tabla de módulos" OR
   NOT seen MATCHES "Las tres traducciones")
  message(FATAL_ERROR "status ${status}\n${complaints}\n${seen}")
endif()
