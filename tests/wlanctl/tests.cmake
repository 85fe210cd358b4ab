# wlanctl end to end: the built program, inside the simulated gateway.
wifimgr_test_helper(damage_store wlanctl/damage_store.c)
wifimgr_test_helper(hold_store wlanctl/hold_store.c)
wifimgr_test_helper(segment_bytes wlanctl/segment_bytes.c)
foreach(library kill_at_rename kill_at_setter kill_at_step kill_at_store_write no_descriptors no_notices given_neighbour_table)
  add_library(${library} MODULE wlanctl/${library}.c)
  wifimgr_room_target(wlanctl ${library})
endforeach()
target_link_libraries(kill_at_rename PRIVATE ${CMAKE_DL_LIBS})
target_link_libraries(kill_at_setter PRIVATE ${CMAKE_DL_LIBS})
target_link_libraries(kill_at_step PRIVATE ${CMAKE_DL_LIBS})
target_link_libraries(kill_at_store_write PRIVATE ${CMAKE_DL_LIBS})
target_link_libraries(no_descriptors PRIVATE ${CMAKE_DL_LIBS})
target_link_libraries(no_notices PRIVATE ${CMAKE_DL_LIBS})
foreach(target gateway-sim wlanctl library_probe)
  wifimgr_room_target(wlanctl ${target})
endforeach()

# What the tests have on their path.
set(path_folder ${PROJECT_BINARY_DIR}/tests/path)
configure_file(wlanctl/recorded_wlanctl.sh ${path_folder}/wlanctl COPYONLY)
foreach(helper damage_store hold_store library_probe segment_bytes)
  file(CREATE_LINK ${PROJECT_BINARY_DIR}/tests/${helper} ${path_folder}/${helper} SYMBOLIC)
endforeach()

if(NOT WIFIMGR_TEST_PROGRAMS)
  # The system's own, which has the system's jsonschema.
  find_program(WLANCTL_PYTHON python3 HINTS /usr/bin REQUIRED)
  find_package(nlohmann_json REQUIRED)
  add_library(wlanctl_test_support STATIC
    wlanctl/apply_story.cpp wlanctl/interactive_shell.cpp wlanctl/monitor_story.cpp wlanctl/terminal.cpp wlanctl/wlanctl.cpp)
  target_include_directories(wlanctl_test_support PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/wlanctl)
  target_link_libraries(wlanctl_test_support PUBLIC sim_test_support nlohmann_json::nlohmann_json)
  target_compile_definitions(wlanctl_test_support PUBLIC PYTHON_PROGRAM="${WLANCTL_PYTHON}")
  # gcc 12 sees overlaps in "text" + std::string that are none.
  target_compile_options(wlanctl_test_support PUBLIC $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)
  target_precompile_headers(wlanctl_test_support PRIVATE <gmock/gmock.h> <gtest/gtest.h> <nlohmann/json.hpp>)
endif()

foreach(name
    added_records_killed applied_file apply apply_killed
    band_list board
    calibration check colour columns completion confirm
    damaged_state danger debug diff doctor driver_read driver_told dry_run
    edit exit_codes explain export
    force foreign_change
    help history history_folder history_killed
    import import_killed import_round_trip import_to_file in_force interrupt
    kept_lacks keys
    live_store lock loss
    man missing_restart monitor monitor_looks
    neighbours
    pager power_cut
    readme recording rolled_back
    schema schema_kinds secret set set_count set_from show ssid ssid_move ssid_records stations status switched
    taken_back three_states told_at_once
    undo undone unlock unread
    wps wrong_file)
  wifimgr_program_test(wlanctl_test_support ${name}_test wlanctl/${name}_test.cpp)
endforeach()
