# The fuzz doors as plain tests; as programs of libFuzzer they are built by the preset "fuzz" (fuzzers.cmake).
wifimgr_test(fuzz_test fuzz/replay_test.cpp fuzz/door.cpp fuzz/library_stand.cpp fuzz/functions.cpp fuzz/line_door.cpp
  fuzz/dat_file_door.cpp fuzz/settings_door.cpp fuzz/driver_door.cpp fuzz/script_door.cpp fuzz/segment_door.cpp)
if(NOT WIFIMGR_TEST_PROGRAMS)
  target_compile_definitions(fuzz_test PRIVATE FUZZ_FOLDER="${CMAKE_CURRENT_LIST_DIR}")
  target_link_libraries(fuzz_test PRIVATE api_lib_utility)
  use_exported_functions(fuzz_test)
endif()

add_test(NAME fuzz.finds_fail COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/run_test.sh)

# Those of wlanctl have the tool itself in them, whose stand-ins take the place of the tests'.
if(WIFIMGR_WLANCTL)
  if(NOT WIFIMGR_TEST_PROGRAMS)
    find_package(nlohmann_json REQUIRED)
    add_executable(fuzz_tool_test fuzz/replay_test.cpp fuzz/door.cpp fuzz/tool_stand.cpp fuzz/wlanctl_dat_door.cpp
      fuzz/wlanctl_import_door.cpp fuzz/wlanctl_set_door.cpp fuzz/wlanctl_state_door.cpp
      support/main.cpp support/private_namespaces.cpp support/sandbox.cpp)
    target_include_directories(fuzz_tool_test PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_compile_definitions(fuzz_tool_test PRIVATE FUZZ_FOLDER="${CMAKE_CURRENT_LIST_DIR}" DOORS_OF_TOOL)
    target_link_libraries(fuzz_tool_test PRIVATE
      wlanctl_parts GTest::gtest nlohmann_json::nlohmann_json wifimgr_warnings wifimgr_test_code)
    set_target_properties(fuzz_tool_test PROPERTIES
      ENABLE_EXPORTS ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  endif()
  wifimgr_add_library_test(fuzz_tool_test)
endif()
