# Calls as their caller and the driver see them.
wifimgr_test_parts(test_exchange driver/exchange.cpp)

wifimgr_test_with(test_exchange channel_test driver/channel_test.cpp)
wifimgr_test_with(test_exchange caller_request_test driver/caller_request_test.cpp)
wifimgr_test_with(test_exchange probe_response_test driver/probe_response_test.cpp)
wifimgr_test_with(test_exchange radio_load_test driver/radio_load_test.cpp)
wifimgr_test_with(test_exchange wps_pin_test driver/wps_pin_test.cpp)
wifimgr_test_with(test_exchange wps_state_test driver/wps_state_test.cpp)
wifimgr_test_with(test_exchange wps_status_test driver/wps_status_test.cpp)
wifimgr_test_with(test_exchange wps_access_list_test driver/wps_access_list_test.cpp)
# These run out of memory on demand.
wifimgr_test_with(test_exchange ap_count_test driver/ap_count_test.cpp driver/allocation.cpp)
wifimgr_test_with(test_exchange station_capability_test driver/station_capability_test.cpp driver/allocation.cpp)
wifimgr_test_with(test_exchange station_table_test driver/station_table_test.cpp driver/allocation.cpp)
wifimgr_test_with(test_exchange wps_station_test driver/wps_station_test.cpp driver/allocation.cpp)
wifimgr_test(neighbour_test driver/neighbour_test.cpp)
wifimgr_test(process_info_test driver/process_info_test.cpp)
wifimgr_test(command_text_test driver/command_text_test.cpp)
