# zendry-make and the build commands with the compilers of the machine.
file(GLOB MAKE_TESTS CONFIGURE_DEPENDS *_test.cpp)
add_executable(make_tests ${MAKE_TESTS})
target_include_directories(make_tests PRIVATE ../support)
add_dependencies(make_tests zendry-form zendry-make zendry-tags references fake_tool)
target_compile_definitions(make_tests PRIVATE
  ZENDRY_MAKE="$<TARGET_FILE:zendry-make>" ZENDRY_DIST="${CMAKE_SOURCE_DIR}/dist"
  FAKE_TOOL="$<TARGET_FILE:fake_tool>" ZENDRY_TAGS="$<TARGET_FILE:zendry-tags>"
  REFERENCES="${CMAKE_BINARY_DIR}/dist/reference/Defs" REFERENCE_DATA="${CMAKE_SOURCE_DIR}/tests/data/reference"
  ZENDRY_FORM="$<TARGET_FILE:zendry-form>" FRAMEWORK_HEADERS="${CMAKE_SOURCE_DIR}/libs/mavro/include"
  REFERENCE_SOURCES="${CMAKE_SOURCE_DIR}/dist/reference")
target_link_libraries(make_tests PRIVATE zendry-core GTest::gmock GTest::gtest_main)
gtest_discover_tests(make_tests DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 120 LABELS e2e)

# The tools that need no window start without the toolkit's libraries.
foreach(tool IN ITEMS Form Lsp Make Tags)
  string(TOLOWER zendry-${tool} program)
  add_test(NAME Zendry${tool}.LinksNoToolkit
    COMMAND ${CMAKE_COMMAND} -D PROGRAM=$<TARGET_FILE:${program}> -P ${CMAKE_CURRENT_LIST_DIR}/LinksNoToolkit.cmake)
  set_tests_properties(Zendry${tool}.LinksNoToolkit PROPERTIES LABELS e2e TIMEOUT 60)
endforeach()

# zendry-lsp as a client starts it.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
add_test(NAME e2e.lsp COMMAND ${Python3_EXECUTABLE} -B ${CMAKE_CURRENT_LIST_DIR}/lsp_test.py)
set_tests_properties(e2e.lsp PROPERTIES LABELS e2e TIMEOUT 120
  ENVIRONMENT "ZENDRY_LSP=$<TARGET_FILE:zendry-lsp>;ZENDRY_SOURCE=${CMAKE_SOURCE_DIR};ZENDRY_BUILD=${CMAKE_BINARY_DIR}")
