wifimgr_test(constants_test platform/constants_test.cpp)
wifimgr_test_with(test_exchange temperature_test platform/temperature_test.cpp)

# The board of these tests.
wifimgr_test_parts(test_board platform/board.cpp)

wifimgr_test_with(test_board board_file_test
  platform/board_reader_test.cpp platform/board_writer_test.cpp platform/button_state_test.cpp)
wifimgr_test_with(test_board board_command_test platform/board_command_test.cpp)
wifimgr_test_with(test_board chip_package_test platform/chip_package_test.cpp)
wifimgr_test_with(test_board interface_address_test
  platform/interface_flags_test.cpp platform/hardware_address_test.cpp platform/binary_address_test.cpp)
wifimgr_test_with(test_board calibration_test platform/calibration_test.cpp)
wifimgr_test_with(setting_checks store_setting_test
  platform/dfs_test.cpp platform/mbo_test.cpp platform/map_mode_test.cpp platform/store_setting.cpp)
wifimgr_test(board_interpose_test platform/board_interpose_test.cpp)
