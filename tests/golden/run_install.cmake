# Installs the program into an empty folder, looks for what a Linux desktop expects of it, and takes it
# away again.
#   cmake -D BUILD=folder -D WORK=folder -P run_install.cmake

cmake_minimum_required(VERSION 3.25)

file(REMOVE_RECURSE ${WORK})
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix "${WORK}/the usr"
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
foreach(file
    bin/campiva
    bin/campiva-gui
    bin/show_drawing
    bin/campiva-informe
    bin/campiva-lote
    share/applications/campiva.desktop
    share/bash-completion/completions/campiva-informe
    share/campiva/campiva.chm
    share/doc/campiva/CHANGELOG.md
    share/doc/campiva/LEEME.md
    share/doc/campiva/README.md
    share/doc/campiva/docs/pictures/choice.png
    share/campiva/samples/villanueva_dibujos/poligonos.txt
    share/icons/hicolor/scalable/apps/campiva.svg
    share/man/es/man1/campiva-gui.1
    share/man/es/man1/campiva-informe.1
    share/man/es/man1/campiva-lote.1
    share/man/es/man1/campiva.1
    share/man/es/man1/show_drawing.1
    share/man/man1/campiva-gui.1
    share/man/man1/campiva-informe.1
    share/man/man1/campiva-lote.1
    share/man/man1/campiva.1
    share/man/man1/show_drawing.1
    share/metainfo/example.vexasoft.campiva.metainfo.xml)
  if(NOT EXISTS "${WORK}/the usr/${file}")
    message(FATAL_ERROR "${file} isn't installed")
  endif()
endforeach()

# The installed program finds its help: the manual, and the text of a control.
file(WRITE ${WORK}/commands "1\n? 1013\n57670\n")
set(ENV{XDG_CONFIG_HOME} ${WORK}/config)
execute_process(COMMAND "${WORK}/the usr/bin/campiva" INPUT_FILE ${WORK}/commands
  OUTPUT_VARIABLE seen ERROR_VARIABLE complaints RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR complaints OR NOT seen MATCHES "Tabla de módulos" OR
   NOT seen MATCHES "Las tres traducciones")
  message(FATAL_ERROR "status ${status}\n${complaints}\n${seen}")
endif()

# Completion knows the options that each program tells of, and no others.
execute_process(COMMAND bash ${CMAKE_CURRENT_LIST_DIR}/compare_options.sh "${WORK}/the usr"
  COMMAND_ERROR_IS_FATAL ANY)

# Installed once more it replaces nothing that somebody made of a sample.
set(changed "${WORK}/the usr/share/campiva/samples/villanueva_dibujos/poligonos.txt")
file(APPEND ${changed} "P077\n")
file(SHA256 ${changed} his)
execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix "${WORK}/the usr"
  OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE kept "${WORK}/the usr/*.anterior*")
file(SHA256 "${changed}.anterior" is)
if(NOT is STREQUAL his OR NOT kept STREQUAL "${changed}.anterior" OR
   NOT said MATCHES "poligonos.txt was changed and stays as")
  message(FATAL_ERROR "kept: ${kept}\n${said}")
endif()
file(REMOVE ${kept})

# It goes again, but for what somebody made of a sample.
file(APPEND ${changed} "P077\n")
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target uninstall
  OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE left "${WORK}/the usr/*")
if(NOT left STREQUAL changed OR NOT said MATCHES "poligonos.txt was changed and stays")
  message(FATAL_ERROR "left behind: ${left}\n${said}")
endif()
file(REMOVE ${changed})
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target uninstall
  OUTPUT_VARIABLE said COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE left "${WORK}/the usr/*")
if(left OR EXISTS "${WORK}/the usr/share/campiva" OR EXISTS "${WORK}/the usr/share/doc/campiva")
  message(FATAL_ERROR "left behind: ${left}")
endif()
if(NOT said MATCHES "were taken away")
  message(FATAL_ERROR "it doesn't say how many: ${said}")
endif()
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target uninstall
  OUTPUT_VARIABLE said ERROR_VARIABLE said RESULT_VARIABLE status)
if(status EQUAL 0)
  message(FATAL_ERROR "nothing is left to be taken away, and it says: ${said}")
endif()

# Wherever it was put it goes, and nothing of anybody else's with it.
foreach(place "Año ñ [1] x" "[1" "y; z")
  set(prefix "${WORK}/${place}")
  set(somebodys "${prefix}/share/campiva/samples/villanueva_dibujos/mis parcelas.txt")
  execute_process(COMMAND ${CMAKE_COMMAND} --install ${BUILD} --prefix "${prefix}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  file(WRITE "${somebodys}" "a month of work\n")
  execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target uninstall
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
  execute_process(COMMAND find "${prefix}" -type f OUTPUT_VARIABLE left)
  if(NOT left STREQUAL "${somebodys}\n")
    message(FATAL_ERROR "left behind under ${prefix}: ${left}")
  endif()
endforeach()

# What was put aside for a package goes from there, whoever asks for it.
set(other "${WORK}/usr/bin/campiva")
file(WRITE "${other}" "another installation's")
file(MAKE_DIRECTORY "${WORK}/work")
execute_process(COMMAND ${CMAKE_COMMAND} -E env DESTDIR=aside
    ${CMAKE_COMMAND} --install ${BUILD} --prefix "${WORK}/usr"
  WORKING_DIRECTORY "${WORK}/work" OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND ${CMAKE_COMMAND} --build ${BUILD} --target uninstall
  OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
execute_process(COMMAND find "${WORK}/work" -type f OUTPUT_VARIABLE left)
if(left OR NOT EXISTS "${other}")
  message(FATAL_ERROR "another's ${other} was taken, or left behind: ${left}")
endif()
