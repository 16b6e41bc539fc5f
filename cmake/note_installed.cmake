# Runs last in an installation and notes in the file `record` what it has put where, each file with its sum
# as sha256sum prints it: by that alone uninstall.cmake tells what it may take away.

# A list of CMake's is its elements with ";" between, and every element is a whole path. It is never walked as
# a list, which takes brackets in a path for more than letters.
set(rest "${CMAKE_INSTALL_MANIFEST_FILES};/")
set(lines "")
while(NOT CMAKE_INSTALL_PREFIX MATCHES ";/") # whose pieces would be somebody else's files
  string(FIND "${rest}" ";/" end)
  if(end EQUAL -1)
    break()
  endif()
  string(SUBSTRING "${rest}" 0 ${end} file)
  math(EXPR end "${end} + 1")
  string(SUBSTRING "${rest}" ${end} -1 rest)
  set(file "$ENV{DESTDIR}${file}")
  cmake_path(ABSOLUTE_PATH file)
  file(SHA256 "${file}" sum)
  string(APPEND lines "${sum}  ${file}\n")
endwhile()
file(WRITE "${record}" "${lines}")
