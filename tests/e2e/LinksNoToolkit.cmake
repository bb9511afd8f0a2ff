# Fails when PROGRAM is linked, directly or through another library, to Qt or a window system.
execute_process(COMMAND ldd ${PROGRAM} OUTPUT_VARIABLE libraries RESULT_VARIABLE status)
if(NOT status EQUAL 0 OR NOT libraries MATCHES "libc")
  message(FATAL_ERROR "ldd can't read ${PROGRAM}: ${libraries}")
endif()
if(libraries MATCHES "lib(Qt|X11|xcb|wayland|GL|qscintilla)[^\n]*")
  message(FATAL_ERROR "${PROGRAM} links ${CMAKE_MATCH_0}")
endif()
