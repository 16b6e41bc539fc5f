# Takes away what the last installation put in place, and the folders that are empty then.
#   cmake -D MANIFEST=install_manifest.txt -P uninstall.cmake
cmake_minimum_required(VERSION 3.25)

if(NOT EXISTS ${MANIFEST})
  message(FATAL_ERROR "${MANIFEST} isn't there: nothing was installed from this build")
endif()
file(STRINGS ${MANIFEST} files)
foreach(file IN LISTS files)
  file(REMOVE "$ENV{DESTDIR}${file}")
  cmake_path(GET file PARENT_PATH folder)
  # Folders of ours alone: those that all programs share stay.
  while(folder MATCHES "/(campiva|campiva/icons|docs|pictures|samples|villanueva[^/]*)$")
    file(GLOB left LIST_DIRECTORIES true "$ENV{DESTDIR}${folder}/*")
    if(left)
      break()
    endif()
    file(REMOVE_RECURSE "$ENV{DESTDIR}${folder}")
    cmake_path(GET folder PARENT_PATH folder)
  endwhile()
endforeach()
