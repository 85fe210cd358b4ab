# A handful of mutants, and whether each that is listed as equivalent still is one; make mutants tries them all. Where the
# test programs are built and sanitized: they are the store's.
find_package(Python3 COMPONENTS Interpreter REQUIRED)
if(WIFIMGR_SANITIZE AND NOT CMAKE_CROSSCOMPILING)
  add_test(NAME mutants.short COMMAND ${Python3_EXECUTABLE} ${CMAKE_CURRENT_LIST_DIR}/run.py
    --build ${PROJECT_BINARY_DIR} --file wps/pin.cpp --jobs 2)
  set_tests_properties(mutants.short PROPERTIES TIMEOUT 900)
  add_custom_target(tests_mutants DEPENDS api_lib_wifimgr tests_wps)
endif()
