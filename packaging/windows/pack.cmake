# Packs what is in the folder it runs in: cmake -D ZIP=FILE -D DATE=YYYY-MM-DD -P pack.cmake
# In the order of the names and with one date for all, so the same files make the same bytes.
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${CMAKE_CURRENT_SOURCE_DIR} *)
file(ARCHIVE_CREATE OUTPUT ${ZIP} PATHS ${files} FORMAT zip MTIME "${DATE} 00:00:00 UTC")
