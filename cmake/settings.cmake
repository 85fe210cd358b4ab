# The settings' table in other forms: pages of the reference, and the dat files of the simulated gateway.
find_program(WIFIMGR_AWK awk REQUIRED)
set(WIFIMGR_SETTINGS ${PROJECT_SOURCE_DIR}/include/wifimgr_settings.h)

# wifimgr_print_settings(FORM OUTPUT): makes a file of the table, in one of the forms of scripts/settings.awk.
function(wifimgr_print_settings form output)
  get_filename_component(folder ${output} DIRECTORY)
  file(MAKE_DIRECTORY ${folder})
  add_custom_command(OUTPUT ${output}
    COMMAND ${WIFIMGR_AWK} -v as=${form} -f ${PROJECT_SOURCE_DIR}/scripts/settings.awk ${WIFIMGR_SETTINGS} > ${output}
    DEPENDS ${WIFIMGR_SETTINGS} ${PROJECT_SOURCE_DIR}/scripts/settings.awk
    VERBATIM)
endfunction()

set(WIFIMGR_SETTINGS_PAGE ${PROJECT_BINARY_DIR}/reference/settings.md)
set(WIFIMGR_SETTINGS_MANUAL ${PROJECT_BINARY_DIR}/reference/wifimgr_settings.3)
wifimgr_print_settings(markdown ${WIFIMGR_SETTINGS_PAGE})
wifimgr_print_settings(man ${WIFIMGR_SETTINGS_MANUAL})
add_custom_target(settings_reference ALL DEPENDS ${WIFIMGR_SETTINGS_PAGE} ${WIFIMGR_SETTINGS_MANUAL})
