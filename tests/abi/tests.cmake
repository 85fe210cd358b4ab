# A caller in C, with the public header and nothing else of the library.
set(here ${CMAKE_CURRENT_LIST_DIR})
set(library $<TARGET_FILE:api_lib_wifimgr>)

add_executable(c_caller ${here}/c_caller.c ${here}/private_files.c)
target_link_libraries(c_caller PRIVATE api_lib_wifimgr wifimgr_warnings wifimgr_sanitizers)
target_compile_options(c_caller PRIVATE -pedantic-errors)
set_target_properties(c_caller PROPERTIES
  C_EXTENSIONS OFF RUNTIME_OUTPUT_DIRECTORY ${PROJECT_BINARY_DIR}/tests)
add_test(NAME abi.c_caller COMMAND c_caller)

add_test(NAME abi.exports COMMAND sh ${here}/exports.sh ${CMAKE_NM} ${PROJECT_SOURCE_DIR} ${library})
add_test(NAME abi.include_directions COMMAND sh ${here}/include_directions.sh ${PROJECT_SOURCE_DIR})

add_test(NAME abi.contracts COMMAND sh ${here}/contracts.sh ${PROJECT_SOURCE_DIR})

# Under the sanitizers the library needs their runtime, and has constructors of theirs.
if(NOT WIFIMGR_SANITIZE)
  set(checks needed soname build_id bind_now relro no_exec_stack no_text_relocations no_symbolic no_thread_locals
    no_static_constructors no_cxx_runtime no_versions interposable no_build_path constant_rows)
  # What only an optimised build has, and canaries only where they need no fourth library.
  if(CMAKE_BUILD_TYPE MATCHES "^(Release|MinSizeRel)$")
    list(APPEND checks bounds_checked)
    if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64)$")
      list(APPEND checks canaries)
    endif()
  endif()
  foreach(check ${checks})
    add_test(NAME abi.${check} COMMAND sh ${here}/elf.sh
      ${check} ${CMAKE_READELF} ${CMAKE_NM} ${library} ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR})
  endforeach()

  # The table of settings, as an integrator includes it.
  if(WIFIMGR_CXX_RUNTIME)
    add_test(NAME abi.settings COMMAND sh ${here}/settings.sh ${CMAKE_COMMAND} ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}
      ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER} ${CMAKE_CROSSCOMPILING_EMULATOR})
    set_tests_properties(abi.settings PROPERTIES TIMEOUT 120)
  endif()

  # The same bytes wherever it is built.
  add_test(NAME abi.reproducible COMMAND sh ${here}/reproducible.sh
    ${CMAKE_COMMAND} ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR} ${library})
  set_tests_properties(abi.reproducible PROPERTIES TIMEOUT 900)

  # The binary interface is that of the description kept here. Other compilers describe the same differently.
  find_program(WIFIMGR_ABIDIFF abidiff)
  if(WIFIMGR_ABIDIFF AND WIFIMGR_CXX_RUNTIME AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    add_test(NAME abi.interface COMMAND sh ${here}/interface.sh
      ${WIFIMGR_ABIDIFF} ${PROJECT_SOURCE_DIR} ${library})
  endif()
endif()

if(WIFIMGR_TEST_PROGRAMS)
  add_test(NAME abi.loaded_library COMMAND sh ${here}/loaded_library.sh
    ${WIFIMGR_TEST_PROGRAMS}/lock_test ${PROJECT_BINARY_DIR}/lib)
endif()
