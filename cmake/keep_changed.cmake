# Runs in an installation in front of the samples, of which somebody may have made something of his own: what
# the last installation didn't put there, by its record, stays beside the new one.
#   source       the folder of the samples
#   destination  where they go, below the prefix
#   record       installed.txt

set(place "$ENV{DESTDIR}${CMAKE_INSTALL_PREFIX}/${destination}")
cmake_path(ABSOLUTE_PATH place)
set(ours "")
if(EXISTS "${record}")
  file(READ "${record}" ours)
endif()
file(GLOB_RECURSE samples RELATIVE "${source}" "${source}/*")
foreach(sample IN LISTS samples)
  set(there "${place}/${sample}")
  if(NOT EXISTS "${there}")
    continue()
  endif()
  file(SHA256 "${there}" is)
  file(SHA256 "${source}/${sample}" new)
  string(FIND "${ours}" "${is}  ${there}\n" noted)
  if(is STREQUAL new OR NOT noted EQUAL -1)
    continue()
  endif()
  set(kept "${there}.anterior")
  set(number 1)
  while(EXISTS "${kept}")
    math(EXPR number "${number} + 1")
    set(kept "${there}.anterior.${number}")
  endwhile()
  file(RENAME "${there}" "${kept}")
  message(STATUS "${there} was changed and stays as ${kept}")
endforeach()
