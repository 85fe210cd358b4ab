wifimgr_test(documented_modes_test docs/documented_modes_test.cpp)
if(NOT WIFIMGR_TEST_PROGRAMS)
  target_compile_definitions(documented_modes_test PRIVATE SOURCES="${PROJECT_SOURCE_DIR}")
endif()
