# Every exported function with hostile arguments. What is called is read from the public header, so a new export is
# called too.
if(NOT WIFIMGR_TEST_PROGRAMS)
  set(sweep_functions ${PROJECT_BINARY_DIR}/generated/sweep_functions.def)
  file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/generated)
  add_custom_command(OUTPUT ${sweep_functions}
    COMMAND awk -f ${CMAKE_CURRENT_LIST_DIR}/functions.awk ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h > ${sweep_functions}
    DEPENDS ${CMAKE_CURRENT_LIST_DIR}/functions.awk ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h
    COMMENT "Listing the exported functions"
    VERBATIM)
endif()
wifimgr_test(sweep_test sweep/sweep_test.cpp sweep/arguments.cpp ${sweep_functions})
if(NOT WIFIMGR_TEST_PROGRAMS)
  target_include_directories(sweep_test PRIVATE ${PROJECT_BINARY_DIR}/generated)
endif()
