# Processes that are killed, or lack what they need, wherever that can happen. Without the test framework, so that it runs
# as it ships and sanitized; emulated processors have no ptrace.
if(NOT CMAKE_CROSSCOMPILING)
  add_executable(soak soak/crowd.cpp soak/operation.cpp soak/soak.cpp soak/stepwise.cpp soak/tracer.cpp soak/world.cpp
    support/private_namespaces.cpp)
  target_include_directories(soak PRIVATE ${CMAKE_CURRENT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/platform_libs)
  target_link_libraries(soak PRIVATE api_lib_wifimgr wifimgr_warnings wifimgr_sanitizers)
  # The library must find the program's own system().
  set_target_properties(soak PROPERTIES ENABLE_EXPORTS ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  add_test(NAME soak.short COMMAND soak --kills 250 --seconds 60 --seed 1 --stride 7)
  set_tests_properties(soak.short PROPERTIES TIMEOUT 900)
  wifimgr_room_target(soak soak)
endif()
