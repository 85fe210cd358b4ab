# The stand-ins for the platform's libraries, without the seams that take their place in the other tests.
foreach(name debug_switch_test escape_test)
  if(NOT WIFIMGR_TEST_PROGRAMS)
    add_executable(${name} platform_libs/${name}.cpp support/main.cpp support/sandbox.cpp)
    target_include_directories(${name} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
    target_link_libraries(${name} PRIVATE
      api_lib_wifimgr vexa_lib_dbg api_lib_utility GTest::gtest wifimgr_warnings wifimgr_test_code)
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  endif()
  wifimgr_add_library_test(${name})
endforeach()
