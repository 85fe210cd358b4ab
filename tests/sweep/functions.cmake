# use_exported_functions(TARGET): gives its sources "sweep_functions.def", a row per function of the public header.
function(use_exported_functions target)
  set(rows ${PROJECT_BINARY_DIR}/generated/sweep_functions.def)
  if(NOT TARGET exported_functions)
    set(script ${PROJECT_SOURCE_DIR}/tests/sweep/functions.awk)
    set(header ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h)
    file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/generated)
    add_custom_command(OUTPUT ${rows}
      COMMAND awk -f ${script} ${header} > ${rows}
      DEPENDS ${script} ${header}
      COMMENT "Listing the exported functions"
      VERBATIM)
    add_custom_target(exported_functions DEPENDS ${rows})
  endif()
  add_dependencies(${target} exported_functions)
  target_include_directories(${target} PRIVATE ${PROJECT_BINARY_DIR}/generated)
endfunction()
