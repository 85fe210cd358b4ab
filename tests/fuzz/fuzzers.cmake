# The fuzz doors as programs of libFuzzer, fuzz_NAME: the library's own sources, instrumented, with the tests' stand-ins for
# driver, commands and trace.
include(${PROJECT_SOURCE_DIR}/tests/sweep/functions.cmake)
find_package(GTest 1.12 REQUIRED)

set(fuzz_checks -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_compile_options(-O1 -g1)

get_target_property(sources api_lib_wifimgr SOURCES)
list(FILTER sources INCLUDE REGEX "\\.cpp$")
list(TRANSFORM sources PREPEND ${PROJECT_SOURCE_DIR}/)
add_library(fuzzed_library STATIC EXCLUDE_FROM_ALL ${sources} ${PROJECT_SOURCE_DIR}/platform_libs/api_lib_utility.c)
target_include_directories(fuzzed_library
  PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/platform_libs)
target_compile_options(fuzzed_library PRIVATE -fno-exceptions -fno-rtti -fsanitize=fuzzer-no-link ${fuzz_checks})

set(tests ${PROJECT_SOURCE_DIR}/tests)
add_library(fuzz_parts STATIC EXCLUDE_FROM_ALL
  ${tests}/fuzz/door.cpp ${tests}/fuzz/functions.cpp
  ${tests}/support/private_namespaces.cpp ${tests}/support/sandbox.cpp ${tests}/support/seams.cpp ${tests}/support/requests.cpp)
target_include_directories(fuzz_parts PUBLIC ${tests})
target_compile_options(fuzz_parts PUBLIC ${fuzz_checks})
target_link_libraries(fuzz_parts PUBLIC fuzzed_library GTest::gtest)

use_exported_functions(fuzz_parts)

add_custom_target(fuzzers)
# Rows of doors.def: DOOR(name, "about").
file(STRINGS ${tests}/fuzz/doors.def rows REGEX "^DOOR")
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tests}/fuzz/doors.def)
foreach(row IN LISTS rows)
  string(REGEX REPLACE "^DOOR.([a-z_]+),.*" "\\1" door "${row}")
  add_executable(fuzz_${door} EXCLUDE_FROM_ALL ${tests}/fuzz/fuzz_main.cpp ${tests}/fuzz/${door}_door.cpp)
  target_compile_definitions(fuzz_${door} PRIVATE DOOR_FUNCTION=try_${door})
  target_compile_options(fuzz_${door} PRIVATE -fsanitize=fuzzer-no-link)
  target_link_libraries(fuzz_${door} PRIVATE fuzz_parts)
  target_link_options(fuzz_${door} PRIVATE -fsanitize=fuzzer,address,undefined)
  set_target_properties(fuzz_${door} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
  add_dependencies(fuzzers fuzz_${door})
endforeach()
