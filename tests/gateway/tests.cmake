# The library end to end: a process that links it, inside the simulated gateway.
wifimgr_test_helper(library_probe
  gateway/library_probe.c gateway/probe_board.c gateway/probe_driver.c gateway/probe_wps.c)
target_link_libraries(library_probe PRIVATE api_lib_wifimgr)
foreach(target gateway-sim apply_settings attach_store status_page switch_radio)
  wifimgr_room_target(gateway ${target})
endforeach()

wifimgr_program_test(sim_test_support apply_test gateway/apply_test.cpp)
wifimgr_program_test(sim_test_support board_live_test gateway/board_live_test.cpp)
wifimgr_program_test(sim_test_support board_test gateway/board_test.cpp)
wifimgr_program_test(sim_test_support demo_test gateway/demo_test.cpp)
wifimgr_program_test(sim_test_support query_test gateway/query_test.cpp)
wifimgr_program_test(sim_test_support restart_test gateway/restart_test.cpp)
wifimgr_program_test(sim_test_support script_test gateway/script_test.cpp)
wifimgr_program_test(sim_test_support shared_store_test gateway/shared_store_test.cpp)
wifimgr_program_test(sim_test_support wps_live_test gateway/wps_live_test.cpp ${PROJECT_SOURCE_DIR}/sim/state/wps_pin.cpp)
