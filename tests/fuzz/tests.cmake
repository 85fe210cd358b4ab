# The fuzz doors as plain tests; as programs of libFuzzer they are built by the preset "fuzz" (fuzzers.cmake).
wifimgr_test(fuzz_test fuzz/replay_test.cpp fuzz/door.cpp fuzz/functions.cpp fuzz/line_door.cpp fuzz/dat_file_door.cpp
  fuzz/settings_door.cpp fuzz/driver_door.cpp fuzz/script_door.cpp fuzz/segment_door.cpp)
if(NOT WIFIMGR_TEST_PROGRAMS)
  target_compile_definitions(fuzz_test PRIVATE FUZZ_FOLDER="${CMAKE_CURRENT_LIST_DIR}")
  target_link_libraries(fuzz_test PRIVATE api_lib_utility)
  use_exported_functions(fuzz_test)
endif()
