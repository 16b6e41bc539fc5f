# Lists the files below a folder with their sums, and its folders, the innermost first, as macros for
# makensis, which hand on what else they get:
#   cmake -D FOLDER=... -D NAME=CONTENT -D LIST=FILE -P list_content.cmake
# gives EACH_CONTENT_FILE and EACH_CONTENT_FOLDER.
file(GLOB_RECURSE files LIST_DIRECTORIES false RELATIVE ${FOLDER} ${FOLDER}/*)
set(folders "")
set(text "!macro EACH_${NAME}_FILE what more\n")
foreach(file ${files})
  file(SHA256 ${FOLDER}/${file} sum)
  cmake_path(GET file PARENT_PATH folder)
  list(APPEND folders ${folder})
  string(REPLACE "/" "\\" file ${file})
  string(REPLACE "/" "\\" inside "${folder}")
  string(APPEND text "  !insertmacro \${what} \"\${more}\" \"${file}\" \"${inside}\" ${sum}\n")
endforeach()
list(REMOVE_DUPLICATES folders)
list(SORT folders ORDER DESCENDING)
string(APPEND text "!macroend\n!macro EACH_${NAME}_FOLDER what more\n")
foreach(folder ${folders})
  string(REPLACE "/" "\\" folder ${folder})
  string(APPEND text "  !insertmacro \${what} \"\${more}\" \"${folder}\"\n")
endforeach()
file(WRITE ${LIST} "${text}!macroend\n")
