# What the programs' files hold for the system, from the same drawings and version as all else. Made
# once, as the objects of windows_resources, and with the dialogs' picture of windows_resources_picture,
# for whatever programs take them.
find_program(RSVG_CONVERT rsvg-convert REQUIRED)
find_program(ICOTOOL icotool REQUIRED)
find_program(CONVERT convert REQUIRED)

function(campiva_make_windows_resources)
  set(drawings ${PROJECT_SOURCE_DIR}/resources/drawings)
  set(place ${CMAKE_CURRENT_BINARY_DIR}/windows)
  file(MAKE_DIRECTORY ${place})
  set(version_numbers ${CAMPIVA_VERSION_NUMBERS})
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/campiva.manifest.in
    ${place}/campiva.manifest @ONLY)
  configure_file(${PROJECT_SOURCE_DIR}/packaging/windows/campiva.rc.in ${place}/campiva.rc @ONLY)

  # The sizes that the system asks for, from the title bar on a plain screen to the largest view.
  set(images "")
  foreach(size 16 20 24 32 40 48 64 96 128 256)
    set(image ${place}/icon_${size}.png)
    add_custom_command(OUTPUT ${image}
      COMMAND ${RSVG_CONVERT} -w ${size} -h ${size} -o ${image} ${drawings}/campiva.svg
      DEPENDS ${drawings}/campiva.svg VERBATIM)
    list(APPEND images ${image})
  endforeach()
  list(GET images -1 largest)
  set(others ${images})
  list(POP_BACK others)
  add_custom_command(OUTPUT ${place}/campiva.ico
    COMMAND ${ICOTOOL} -c -o ${place}/campiva.ico ${others} --raw=${largest}
    DEPENDS ${images} COMMENT "Making the icon" VERBATIM)
  # Three times its natural size: a dialog shows it smaller, whatever the screen.
  add_custom_command(OUTPUT ${place}/picture.bmp
    COMMAND ${RSVG_CONVERT} -z 3 -o ${place}/picture.png ${drawings}/picture.svg
    COMMAND ${CONVERT} ${place}/picture.png -define bmp:format=bmp4 ${place}/picture.bmp
    DEPENDS ${drawings}/picture.svg COMMENT "Making the picture" VERBATIM)
  set_source_files_properties(${place}/campiva.rc PROPERTIES
    OBJECT_DEPENDS "${place}/campiva.ico;${place}/picture.bmp;${place}/campiva.manifest")
  add_library(windows_resources OBJECT ${place}/campiva.rc)
  add_library(windows_resources_picture OBJECT ${place}/campiva.rc)
  target_compile_definitions(windows_resources_picture PRIVATE WITH_PICTURE)
  add_dependencies(windows_resources_picture windows_resources) # both need the icon: one makes it
endfunction()
