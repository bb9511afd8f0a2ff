# zendry-make and the build commands with the compilers of the machine.
file(GLOB MAKE_TESTS CONFIGURE_DEPENDS *_test.cpp)
add_executable(make_tests ${MAKE_TESTS})
target_include_directories(make_tests PRIVATE ../support)
add_dependencies(make_tests zendry-make fake_tool)
target_compile_definitions(make_tests PRIVATE
  ZENDRY_MAKE="$<TARGET_FILE:zendry-make>" ZENDRY_DIST="${CMAKE_SOURCE_DIR}/dist"
  FAKE_TOOL="$<TARGET_FILE:fake_tool>")
target_link_libraries(make_tests PRIVATE zendry-core GTest::gmock GTest::gtest_main)
gtest_discover_tests(make_tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS e2e)

# The tools that need no window start without the toolkit's libraries.
add_test(NAME ZendryMake.LinksNoToolkit
  COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:zendry-make> -P ${CMAKE_CURRENT_LIST_DIR}/LinksNoToolkit.cmake)
set_tests_properties(ZendryMake.LinksNoToolkit PROPERTIES LABELS e2e TIMEOUT 60)
