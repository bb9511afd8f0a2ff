# mavro_add_resources(TARGET TYPE ID FILE [TYPE ID FILE]...)
#
# Links the bytes of files into TARGET as entries of the section "mavro_resources", where the
# framework finds them by type and id; an ID that is no number is a name. The layout is that of
# ResourceEntry in Resource.h. A changed file rebuilds the entry; files may be made by the build.
function(mavro_add_resources target)
  list(LENGTH ARGN count)
  math(EXPR rest "${count} % 3")
  if(count EQUAL 0 OR NOT rest EQUAL 0)
    message(FATAL_ERROR "mavro_add_resources: TYPE ID FILE, repeated, is expected behind ${target}")
  endif()
  get_property(serial TARGET ${target} PROPERTY MAVRO_RESOURCE_SERIAL)
  math(EXPR serial "0${serial} + 1")
  set_property(TARGET ${target} PROPERTY MAVRO_RESOURCE_SERIAL ${serial})

  set(code "typedef int NoEmptyUnit;\n")
  set(files "")
  set(entries ${ARGN})
  while(entries)
    list(POP_FRONT entries type id file)
    get_filename_component(file "${file}" ABSOLUTE)
    list(APPEND files "${file}")
    mavro_resource_entry(code "${type}" "${id}" "${file}")
  endwhile()
  string(APPEND code "__asm__(\".text\");\n")

  set(source "${CMAKE_CURRENT_BINARY_DIR}/${target}-resources-${serial}.c")
  file(CONFIGURE OUTPUT "${source}" CONTENT "@code@" @ONLY)
  set_source_files_properties("${source}" PROPERTIES OBJECT_DEPENDS "${files}" SKIP_AUTOGEN ON)
  target_sources(${target} PRIVATE "${source}")
endfunction()

# Appends the assembler text of one entry to the variable that `out` names. Numbers are the labels: 1
# the bytes, 2 their end, 3 the type, 4 the name.
function(mavro_resource_entry out type id file)
  foreach(round IN ITEMS assembler C)
    string(REPLACE "\\" "\\\\" file "${file}")
    string(REPLACE "\"" "\\\"" file "${file}")
  endforeach()
  set(name "")
  set(nameLabel 0)
  if(NOT id MATCHES "^(0[xX][0-9a-fA-F]+|[0-9]+)$")
    set(name "    \"4: .asciz \\\"${id}\\\"\\n\"\n")
    set(nameLabel 4b)
    set(id 0)
  endif()
  set(${out} "${${out}}__asm__(
    \".section .rodata.mavro_resources,\\\"a\\\",@progbits\\n\"
    \".balign 16\\n\"
    \"1: .incbin \\\"${file}\\\"\\n\"
    \"2: .byte 0\\n\"
    \"3: .asciz \\\"${type}\\\"\\n\"
${name}    \".section mavro_resources,\\\"aw\\\",@progbits\\n\"
    \".balign 8\\n\"
    \".quad 3b, ${id}, ${nameLabel}, 1b, 2b - 1b\\n\");
" PARENT_SCOPE)
endfunction()
