# The fuzz doors as programs of libFuzzer, fuzz_NAME: the library's own sources, instrumented. A door of the library has the
# tests' stand-ins for driver, commands and trace; one of the tool has the tool's sources, and their own stand-ins.
include(${PROJECT_SOURCE_DIR}/tests/sweep/functions.cmake)
find_package(GTest 1.12 REQUIRED)
find_package(CLI11 REQUIRED)
find_package(nlohmann_json REQUIRED)

set(fuzz_checks -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
add_compile_options(-O1 -g1)

get_target_property(sources api_lib_wifimgr SOURCES)
list(FILTER sources INCLUDE REGEX "\\.cpp$")
list(TRANSFORM sources PREPEND ${PROJECT_SOURCE_DIR}/)
add_library(fuzzed_library STATIC EXCLUDE_FROM_ALL ${sources} ${PROJECT_SOURCE_DIR}/platform_libs/api_lib_utility.c)
target_include_directories(fuzzed_library
  PUBLIC ${PROJECT_SOURCE_DIR} ${PROJECT_SOURCE_DIR}/include ${PROJECT_SOURCE_DIR}/platform_libs)
target_compile_options(fuzzed_library PRIVATE -fno-exceptions -fno-rtti -fsanitize=fuzzer-no-link ${fuzz_checks})

# Objects, so that all of the tool's stand-ins are there: with some of them left out a value would reach a shell.
if(NOT TARGET wlanctl_parts)
  message(FATAL_ERROR "the fuzz doors need the tool: WIFIMGR_WLANCTL=ON")
endif()
get_target_property(sources wlanctl_parts SOURCES)
list(TRANSFORM sources PREPEND ${PROJECT_SOURCE_DIR}/wlanctl/)
add_library(fuzzed_tool OBJECT EXCLUDE_FROM_ALL ${sources})
target_compile_definitions(fuzzed_tool PRIVATE WLANCTL_FOLDER="" WLANCTL_VERSION="${PROJECT_VERSION}")
target_compile_options(fuzzed_tool PRIVATE -fsanitize=fuzzer-no-link ${fuzz_checks})
target_link_libraries(fuzzed_tool PUBLIC fuzzed_library PRIVATE CLI11::CLI11 nlohmann_json::nlohmann_json)

set(tests ${PROJECT_SOURCE_DIR}/tests)
add_library(fuzz_parts INTERFACE)
target_include_directories(fuzz_parts INTERFACE ${tests})
target_compile_options(fuzz_parts INTERFACE ${fuzz_checks})
target_link_libraries(fuzz_parts INTERFACE fuzzed_library GTest::gtest)
set(shared ${tests}/fuzz/door.cpp ${tests}/support/private_namespaces.cpp ${tests}/support/sandbox.cpp)

add_library(fuzz_stand_LIBRARY STATIC EXCLUDE_FROM_ALL ${shared}
  ${tests}/fuzz/library_stand.cpp ${tests}/fuzz/functions.cpp ${tests}/support/seams.cpp ${tests}/support/requests.cpp)
target_link_libraries(fuzz_stand_LIBRARY PUBLIC fuzz_parts)
use_exported_functions(fuzz_stand_LIBRARY)

add_library(fuzz_stand_TOOL STATIC EXCLUDE_FROM_ALL ${shared} ${tests}/fuzz/tool_stand.cpp)
target_link_libraries(fuzz_stand_TOOL PUBLIC fuzz_parts PRIVATE nlohmann_json::nlohmann_json)

add_custom_target(fuzzers)

# fuzz_program(NAME STAND): a door, whose function is try_NAME in NAME_door.cpp.
function(fuzz_program door stand)
  add_executable(fuzz_${door} EXCLUDE_FROM_ALL ${tests}/fuzz/fuzz_main.cpp ${tests}/fuzz/${door}_door.cpp)
  target_compile_definitions(fuzz_${door} PRIVATE DOOR_FUNCTION=try_${door})
  target_compile_options(fuzz_${door} PRIVATE -fsanitize=fuzzer-no-link)
  target_link_libraries(fuzz_${door} PRIVATE fuzz_stand_${stand})
  if(stand STREQUAL TOOL)
    target_link_libraries(fuzz_${door} PRIVATE fuzzed_tool nlohmann_json::nlohmann_json)
  endif()
  target_link_options(fuzz_${door} PRIVATE -fsanitize=fuzzer,address,undefined)
  set_target_properties(fuzz_${door} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/fuzz)
  add_dependencies(fuzzers fuzz_${door})
endfunction()

# Rows of doors.def: DOOR(name, stand, "about").
file(STRINGS ${tests}/fuzz/doors.def rows REGEX "^DOOR")
set_property(DIRECTORY ${PROJECT_SOURCE_DIR} APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${tests}/fuzz/doors.def)
foreach(row IN LISTS rows)
  string(REGEX MATCH "^DOOR.([a-z_]+), ([A-Z]+)," row "${row}")
  fuzz_program(${CMAKE_MATCH_1} ${CMAKE_MATCH_2})
endforeach()
fuzz_program(broken LIBRARY)
