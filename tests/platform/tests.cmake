wifimgr_test(constants_test platform/constants_test.cpp)
wifimgr_exchange_test(temperature_test platform/temperature_test.cpp)

# board_test(NAME SOURCE...): a wifimgr_test with the board of these tests.
add_library(test_board STATIC platform/board.cpp)
target_link_libraries(test_board PUBLIC test_support)
function(board_test name)
  wifimgr_test(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE test_board)
endfunction()

board_test(board_file_test platform/board_reader_test.cpp platform/board_writer_test.cpp platform/button_state_test.cpp)
board_test(board_command_test platform/board_command_test.cpp)
board_test(chip_package_test platform/chip_package_test.cpp)
board_test(interface_address_test
  platform/interface_flags_test.cpp platform/hardware_address_test.cpp platform/binary_address_test.cpp)
board_test(calibration_test platform/calibration_test.cpp)
params_test(store_setting_test
  platform/dfs_test.cpp platform/mbo_test.cpp platform/map_mode_test.cpp platform/store_setting.cpp)
wifimgr_test(board_interpose_test platform/board_interpose_test.cpp)
