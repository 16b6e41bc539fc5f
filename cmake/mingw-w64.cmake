# Toolchain for a Windows build with mingw-w64 on Debian (package g++-mingw-w64-x86-64-posix):
#   cmake -S . -B build/windows -G Ninja -D CMAKE_TOOLCHAIN_FILE=cmake/mingw-w64.cmake \
#     -D CAMPIVA_TESTS=OFF -D CAMPIVA_BENCH=OFF
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_CXX_COMPILER x86_64-w64-mingw32-g++-posix)
set(CMAKE_RC_COMPILER x86_64-w64-mingw32-windres)
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
