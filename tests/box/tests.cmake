# What the driver in the kernel is made of besides the kernel: compiled for user space, with sanitizers.
if(NOT WIFIMGR_TEST_PROGRAMS)
  set(box_driver ${PROJECT_SOURCE_DIR}/box/driver)
  add_library(box_test_support STATIC box/kept_texts.cpp ${box_driver}/bss_settings.c ${box_driver}/dat.c ${box_driver}/fault_list.c
    ${box_driver}/radio_state.c ${box_driver}/text.c ${PROJECT_SOURCE_DIR}/sim/driver/state_text.c)
  target_include_directories(box_test_support PUBLIC ${PROJECT_SOURCE_DIR} ${CMAKE_CURRENT_SOURCE_DIR}/box)
  target_link_libraries(box_test_support PUBLIC
    gateway_parts GTest::gtest_main GTest::gmock wifimgr_warnings wifimgr_sanitizers)
  target_precompile_headers(box_test_support PRIVATE
    $<$<COMPILE_LANGUAGE:CXX>:<gmock/gmock.h$<ANGLE-R>> $<$<COMPILE_LANGUAGE:CXX>:<gtest/gtest.h$<ANGLE-R>>)
endif()

wifimgr_program_test(box_test_support driver_parts_test box/dat_test.cpp box/bss_settings_test.cpp box/fault_list_test.cpp
  box/radio_state_test.cpp)
