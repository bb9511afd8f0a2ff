# What an installation holds is listed once, by calls of these functions, and laid out in two ways: the
# target "stage" lays it out under ZENDRY_STAGE, where the program runs from the build; `cmake --install`
# under lib/zendry of its prefix. The folder that it lies in is the root of the installation.

set(ZENDRY_STAGE ${CMAKE_BINARY_DIR}/stage CACHE PATH "Where the target \"stage\" lays out the installation")
set(ZENDRY_ROOT lib/zendry)

# zendry_ship(FOLDER KIND WHAT...): puts files into FOLDER of the installation. KIND and what follows are
# those of install(): TARGETS, FILES or PROGRAMS, or DIRECTORY, which without a name makes an empty folder.
function(zendry_ship folder kind)
  install(${kind} ${ARGN} DESTINATION ${ZENDRY_ROOT}/${folder} COMPONENT zendry)
  install(${kind} ${ARGN} DESTINATION ${folder} COMPONENT stage EXCLUDE_FROM_ALL)
endfunction()

# zendry_ship_links(FOLDER NAME...): puts links to programs of the machine into FOLDER. A program may be
# missing there.
function(zendry_ship_links folder)
  set(code "")
  foreach(name IN LISTS ARGN)
    string(APPEND code "file(CREATE_LINK /usr/bin/${name} \"\${place}/${name}\" SYMBOLIC)\n")
  endforeach()
  zendry_ship(${folder} DIRECTORY)
  set(prefix "\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}")
  install(CODE "set(place \"${prefix}/${ZENDRY_ROOT}/${folder}\")\n${code}" COMPONENT zendry)
  install(CODE "set(place \"${prefix}/${folder}\")\n${code}" COMPONENT stage EXCLUDE_FROM_ALL)
endfunction()
