# Every exported function with hostile arguments. What is called is read from the public header, so a new export is
# called too.
include(${CMAKE_CURRENT_LIST_DIR}/functions.cmake)
wifimgr_test(sweep_test sweep/sweep_test.cpp sweep/arguments.cpp)
if(NOT WIFIMGR_TEST_PROGRAMS)
  use_exported_functions(sweep_test)
endif()
