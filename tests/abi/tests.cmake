# A caller in C, with the public header and nothing else of the library.
add_executable(c_caller abi/c_caller.c abi/private_files.c)
target_link_libraries(c_caller PRIVATE api_lib_wifimgr wifimgr_warnings wifimgr_sanitizers)
target_compile_options(c_caller PRIVATE -pedantic-errors)
set_target_properties(c_caller PROPERTIES
  C_EXTENSIONS OFF RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
add_test(NAME abi.c_caller COMMAND c_caller)

add_test(NAME abi.exports COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/exports.sh
  ${CMAKE_NM} ${PROJECT_SOURCE_DIR} $<TARGET_FILE:api_lib_wifimgr>)
add_test(NAME abi.include_directions COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/include_directions.sh ${PROJECT_SOURCE_DIR})

# Under the sanitizers the library needs their runtime, and has constructors of theirs.
if(NOT WIFIMGR_SANITIZE)
  foreach(check needed soname bind_now relro no_exec_stack no_text_relocations no_symbolic no_thread_locals
      no_static_constructors no_cxx_runtime no_versions interposable)
    add_test(NAME abi.${check} COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/elf.sh
      ${check} ${CMAKE_READELF} ${CMAKE_NM} $<TARGET_FILE:api_lib_wifimgr>)
  endforeach()
endif()
