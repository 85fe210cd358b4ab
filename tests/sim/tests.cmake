# gateway-sim end to end: each test runs the built program.
wifimgr_test_helper(button_probe sim/button_probe.c)
wifimgr_test_helper(request_probe sim/request_probe.c)
wifimgr_test_helper(wireless_probe sim/wireless_probe.c)
wifimgr_room_target(sim gateway-sim)

if(NOT WIFIMGR_TEST_PROGRAMS)
  add_library(sim_test_support STATIC sim/driver_probe.cpp sim/programs.cpp sim/simulation.cpp)
  set_source_files_properties(sim/programs.cpp PROPERTIES
    COMPILE_DEFINITIONS "BUILD_FOLDER=\"${PROJECT_BINARY_DIR}\";SOURCE_FOLDER=\"${PROJECT_SOURCE_DIR}\""
    SKIP_PRECOMPILE_HEADERS ON)
  target_include_directories(sim_test_support PUBLIC ${CMAKE_CURRENT_SOURCE_DIR}/sim ${PROJECT_SOURCE_DIR})
  target_link_libraries(sim_test_support PUBLIC GTest::gtest_main GTest::gmock wifimgr_warnings wifimgr_test_code)
  target_precompile_headers(sim_test_support PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
  # What the driver in C reads its state with.
  add_library(sim_reading STATIC ${PROJECT_SOURCE_DIR}/sim/driver/reading.c)
  target_include_directories(sim_reading PRIVATE ${PROJECT_SOURCE_DIR})
  target_link_libraries(sim_test_support PUBLIC sim_reading)
endif()

wifimgr_program_test(sim_test_support button_test sim/button_test.cpp)
wifimgr_program_test(sim_test_support command_test sim/command_test.cpp)
wifimgr_program_test(sim_test_support driver_request_test sim/driver_request_test.cpp)
wifimgr_program_test(sim_test_support fault_test sim/fault_test.cpp)
wifimgr_program_test(sim_test_support following_test sim/following_test.cpp)
wifimgr_program_test(sim_test_support ifconfig_format_test
  sim/ifconfig_format_test.cpp ${PROJECT_SOURCE_DIR}/sim/tools/interface_text.cpp)
wifimgr_program_test(sim_test_support module_test sim/module_test.cpp)
wifimgr_program_test(sim_test_support root_test sim/root_test.cpp)
wifimgr_program_test(sim_test_support signal_test sim/signal_test.cpp)
wifimgr_program_test(sim_test_support simctl_test sim/simctl_test.cpp)
wifimgr_program_test(sim_test_support site_survey_test sim/site_survey_test.cpp)
wifimgr_program_test(sim_test_support station_test sim/station_test.cpp)
wifimgr_program_test(sim_test_support tool_fault_test sim/tool_fault_test.cpp)
wifimgr_program_test(sim_test_support tool_test sim/tool_test.cpp)
wifimgr_program_test(sim_test_support user_test sim/user_test.cpp)
wifimgr_program_test(sim_test_support wps_test sim/wps_test.cpp ${PROJECT_SOURCE_DIR}/sim/state/wps_pin.cpp)
