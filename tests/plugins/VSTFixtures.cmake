# VST 2.x fixture plug-ins, made as the others are: one set of sources, the entry points compiled for each module anew.
# No code of the host is linked in; of its headers they use the records of the interface.
add_library(vyn_vst_fixture_parts OBJECT
  VSTFixtureAnswers.cpp VSTFixtureEffect.cpp VSTFixtureProcess.cpp VSTFixtureState.cpp)
target_include_directories(vyn_vst_fixture_parts PUBLIC ${tests_dir})
target_compile_options(vyn_vst_fixture_parts PUBLIC $<$<CXX_COMPILER_ID:GNU>:-fno-gnu-unique>)
target_link_libraries(vyn_vst_fixture_parts PRIVATE vyn_warnings PUBLIC vyn_includes Threads::Threads)

add_library(vyn_vst_fixture_support STATIC
  ${tests_dir}/support/VSTCallText.cpp ${tests_dir}/support/VSTFixtureModule.cpp)
target_include_directories(vyn_vst_fixture_support PUBLIC ${tests_dir})
target_link_libraries(vyn_vst_fixture_support PRIVATE vyn_warnings PUBLIC vyn_includes vyn_fixture_support)

# vyn_add_vst_fixture(name [HABIT text] [ENTRY …]): the module vst/name.so with these entry points.
function(vyn_add_vst_fixture name)
  cmake_parse_arguments(FIXTURE "" "HABIT" "ENTRY" ${ARGN})
  list(TRANSFORM FIXTURE_ENTRY PREPEND VYN_VST_FIXTURE_)
  set(target vyn_vst_fixture_${name})
  add_library(${target} MODULE VSTEntryPoints.cpp)
  target_compile_definitions(${target} PRIVATE ${FIXTURE_ENTRY} VYN_VST_FIXTURE_HABIT="${FIXTURE_HABIT}")
  target_link_libraries(${target} PRIVATE vyn_warnings vyn_vst_fixture_parts)
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME ${name} SUFFIX .so LIBRARY_OUTPUT_DIRECTORY ${VYN_FIXTURE_DIR}/vst)
  add_dependencies(vyn_vst_fixture_support ${target})
endfunction()

vyn_add_vst_fixture(configurable ENTRY PLUGIN_MAIN)
vyn_add_vst_fixture(main-only ENTRY MAIN)
vyn_add_vst_fixture(both-names ENTRY PLUGIN_MAIN MAIN)
vyn_add_vst_fixture(no-entry)
vyn_add_vst_fixture(null-entry HABIT "null entry" ENTRY PLUGIN_MAIN)
vyn_add_vst_fixture(wrong-magic HABIT "wrong magic" ENTRY PLUGIN_MAIN)
vyn_add_vst_fixture(shell HABIT "shell" ENTRY PLUGIN_MAIN)
vyn_add_vst_fixture(empty-shell HABIT "empty shell" ENTRY PLUGIN_MAIN)

file(WRITE ${VYN_FIXTURE_DIR}/vst/notaplugin.so "A text file among plug-ins.\n")
