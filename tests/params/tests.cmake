add_library(setting_checks STATIC params/setting_checks.cpp)
target_link_libraries(setting_checks PUBLIC test_support)

# params_test(NAME SOURCE...): a wifimgr_test with what the tests of the settings share.
function(params_test name)
  wifimgr_test(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE setting_checks)
endfunction()

params_test(number_check_test params/number_check_test.cpp)
params_test(address_check_test params/address_check_test.cpp)
params_test(band_wide_test params/band_getter_test.cpp params/band_setter_test.cpp)
params_test(country_test params/country_test.cpp)
params_test(per_ssid_test params/ssid_getter_test.cpp params/ssid_setter_test.cpp)
params_test(ssid_count_test params/ssid_count_test.cpp)
params_test(wep_key_test params/wep_key_test.cpp)
params_test(security_test params/security_test.cpp)
params_test(phy_mode_test params/wireless_mode_test.cpp params/ht_setting_test.cpp)
params_test(vht_test params/vht_test.cpp)
