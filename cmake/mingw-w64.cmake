# Toolchain for a Windows build with mingw-w64 on Debian (package g++-mingw-w64-x86-64-posix; the
# others are in scripts/packages/windows), as the preset `windows` takes it, or
#   cmake -S . -B build/windows -G Ninja -D CMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake
# The programs need no library of the compiler beside them. What the build or the tests run of them
# runs by Wine.
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR x86_64)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
# Without the time of the linking, so that the same sources make the same programs.
set(CMAKE_EXE_LINKER_FLAGS_INIT "-static -Wl,--no-insert-timestamp")
set(CMAKE_BUILD_TYPE Release CACHE STRING "How it is compiled")
set(CMAKE_CROSSCOMPILING_EMULATOR ${CMAKE_CURRENT_LIST_DIR}/../scripts/wine)
# Programs that the build runs are this machine's, all else is the other's.
set(CMAKE_FIND_ROOT_PATH /usr/x86_64-w64-mingw32)
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)
