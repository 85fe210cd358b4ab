# How test programs are made and told to ctest: one entry per program, named ROOM.PROGRAM and labelled with its room.
#
# A build need not make them: with WIFIMGR_TEST_PROGRAMS it runs those of another build on what it has itself. A program finds
# the shared libraries by LD_LIBRARY_PATH then, and other programs by WIFIMGR_TEST_BUILD.
set(WIFIMGR_TEST_PROGRAMS "" CACHE PATH "The tests folder of a build whose test programs are run here; empty: they are built here")
set(WIFIMGR_TEST_GATEWAY "" CACHE PATH "The build whose gateway-sim runs what is not the gateway's own test; empty: this one")

# Tests only have to be built soon: what they run is optimised, or not. Of the sanitizers they have the one that guards
# their own memory against the library; the other would double what they take to compile.
add_library(wifimgr_test_code INTERFACE)
target_compile_options(wifimgr_test_code INTERFACE -O0 $<$<CONFIG:Debug>:-g1>)
if(WIFIMGR_SANITIZE)
  target_compile_options(wifimgr_test_code INTERFACE -fsanitize=address -fno-omit-frame-pointer)
  target_link_options(wifimgr_test_code INTERFACE -fsanitize=address)
endif()

# What the helpers in C are compiled with.
add_compile_options($<$<CONFIG:Release>:-O0>)

# wifimgr_room_target(ROOM TARGET): make check builds what the room's tests need.
function(wifimgr_room_target room target)
  if(NOT TARGET tests_${room})
    add_custom_target(tests_${room})
  endif()
  add_dependencies(tests_${room} ${target})
endfunction()

# wifimgr_add_test(NAME TARGET [NAME=VALUE...]): a program's entry, with variables of its environment.
function(wifimgr_add_test name target)
  if(WIFIMGR_TEST_PROGRAMS)
    add_test(NAME ${test_room}.${name} COMMAND ${WIFIMGR_TEST_PROGRAMS}/${target})
  else()
    add_test(NAME ${test_room}.${name} COMMAND ${target})
    wifimgr_room_target(${test_room} ${target})
  endif()
  set_tests_properties(${test_room}.${name} PROPERTIES TIMEOUT 900 ENVIRONMENT "${ARGN}")
endfunction()

# The entry of a program that links the library: this build's, also when the program is another's.
function(wifimgr_add_library_test name)
  if(WIFIMGR_TEST_PROGRAMS)
    wifimgr_add_test(${name} ${name} LD_LIBRARY_PATH=${PROJECT_BINARY_DIR}/lib)
  else()
    wifimgr_add_test(${name} ${name})
  endif()
endfunction()

# wifimgr_test(NAME SOURCE...): tests of the built library, each in a process and a sandbox of its own.
function(wifimgr_test name)
  if(NOT WIFIMGR_TEST_PROGRAMS)
    add_executable(${name} ${ARGN})
    target_link_libraries(${name} PRIVATE test_support)
    target_precompile_headers(${name} REUSE_FROM test_support)
    # The seams must be found by the library: export what the program defines.
    set_target_properties(${name} PROPERTIES ENABLE_EXPORTS ON RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  endif()
  wifimgr_add_library_test(${name})
endfunction()

# wifimgr_test_parts(NAME SOURCE...): what several test programs of the library share.
function(wifimgr_test_parts name)
  if(NOT WIFIMGR_TEST_PROGRAMS)
    add_library(${name} STATIC ${ARGN})
    target_link_libraries(${name} PUBLIC test_support)
    target_precompile_headers(${name} REUSE_FROM test_support)
  endif()
endfunction()

# wifimgr_test_with(PARTS NAME SOURCE...): wifimgr_test with such parts.
function(wifimgr_test_with parts name)
  wifimgr_test(${name} ${ARGN})
  if(NOT WIFIMGR_TEST_PROGRAMS)
    target_link_libraries(${name} PRIVATE ${parts})
  endif()
endfunction()

# wifimgr_program_test(PARTS NAME SOURCE...): tests that start programs of the build, in simulations. They need nothing of the
# library or the tool but its files. PARTS has what they share, and its precompiled header.
function(wifimgr_program_test parts name)
  set(target ${test_room}_${name})
  if(NOT WIFIMGR_TEST_PROGRAMS)
    add_executable(${target} ${ARGN})
    target_link_libraries(${target} PRIVATE ${parts})
    target_precompile_headers(${target} REUSE_FROM ${parts})
    set_target_properties(${target} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  endif()
  set(gateway ${PROJECT_BINARY_DIR})
  if(WIFIMGR_TEST_GATEWAY AND NOT test_room STREQUAL sim)
    set(gateway ${WIFIMGR_TEST_GATEWAY})
  endif()
  wifimgr_add_test(${name} ${target} WIFIMGR_TEST_BUILD=${PROJECT_BINARY_DIR} WIFIMGR_TEST_GATEWAY=${gateway})
endfunction()

# wifimgr_test_helper(NAME SOURCE...): a program in C that tests run, built wherever they run.
function(wifimgr_test_helper name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE wifimgr_warnings wifimgr_sanitizers)
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
  wifimgr_room_target(${test_room} ${name})
endfunction()
