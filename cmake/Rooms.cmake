# A room is one folder of sources, built as one OBJECT library: objects that only register themselves stay in.
# Every room's objects join vyn_all_objects, from which the shared library and the test programs are linked.
add_library(vyn_all_objects INTERFACE)

function(vyn_add_room name)
  cmake_parse_arguments(ROOM "" "" "SOURCES;USES" ${ARGN})
  add_library(${name} OBJECT ${ROOM_SOURCES})
  target_link_libraries(${name} PRIVATE vyn_warnings PUBLIC vyn_includes Threads::Threads ${ROOM_USES})
  target_compile_definitions(${name} PRIVATE VYN_BUILDING_LIBRARY)
  # Nobody replaces an exported function of ours by another: calls inside the library need not leave room for it.
  target_compile_options(${name} PRIVATE -fno-semantic-interposition)
  target_sources(vyn_all_objects INTERFACE $<TARGET_OBJECTS:${name}>)
  target_link_libraries(vyn_all_objects INTERFACE Threads::Threads ${ROOM_USES})
endfunction()

# In-tree code includes "vyncore/…" and "vynaudiofilterhost/…", the lines that an installed copy understands too.
add_library(vyn_includes INTERFACE)
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/include)
file(CREATE_LINK ${CMAKE_SOURCE_DIR}/host/src ${CMAKE_BINARY_DIR}/include/vynaudiofilterhost SYMBOLIC)
target_include_directories(vyn_includes INTERFACE ${CMAKE_SOURCE_DIR}/platform ${CMAKE_BINARY_DIR}/include)
target_compile_features(vyn_includes INTERFACE cxx_std_20)

# vyn_add_test(name SOURCES … [USES …] [ENVIRONMENT NAME=VALUE]): a GoogleTest program over the objects of all rooms, known
# to ctest by its cases.
function(vyn_add_test name)
  cmake_parse_arguments(TEST "" "" "SOURCES;USES;ENVIRONMENT" ${ARGN})
  add_executable(${name} ${TEST_SOURCES})
  target_link_libraries(${name} PRIVATE
    vyn_warnings vyn_includes vyn_all_objects vyn_test_support GTest::gmock_main ${TEST_USES})
  vyn_set_sanitizer_options(${name})
  gtest_discover_tests(${name} DISCOVERY_TIMEOUT 60 PROPERTIES TIMEOUT 300 ENVIRONMENT "${TEST_ENVIRONMENT}")
endfunction()
