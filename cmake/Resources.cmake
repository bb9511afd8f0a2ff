# mavro_resource_library(NAME SCRIPT [FILE]...)
#
# Makes the interface library NAME of the resources that SCRIPT lists: whoever links it gets the object
# that windres compiles. FILEs are what the script names; they may be made by the build, are looked for
# in their folders, and make the object stale.
function(mavro_resource_library name script)
  get_filename_component(script "${script}" ABSOLUTE)
  set(files "")
  set(folders "")
  foreach(file IN LISTS ARGN)
    get_filename_component(file "${file}" ABSOLUTE)
    get_filename_component(folder "${file}" DIRECTORY)
    list(APPEND files "${file}")
    list(APPEND folders -I "${folder}")
  endforeach()
  list(REMOVE_DUPLICATES files)
  set(object "${CMAKE_CURRENT_BINARY_DIR}/${name}.o")
  add_custom_command(OUTPUT "${object}"
    COMMAND windres -i "${script}" -o "${object}" ${folders}
    DEPENDS windres "${script}" ${files}
    COMMENT "Resources ${name}" VERBATIM)
  add_custom_target(${name}-object DEPENDS "${object}")
  add_library(${name} INTERFACE)
  target_sources(${name} INTERFACE "${object}")
  add_dependencies(${name} ${name}-object)
endfunction()
