# The shared library itself: libapi_lib_wifimgr.so.1.

add_library(api_lib_wifimgr SHARED
  store/attribute.cpp
  store/band_value.cpp
  store/chip.cpp
  store/dat_line.cpp
  store/dat_path.cpp
  store/debug_log.cpp
  store/dump.cpp
  store/key_family.cpp
  store/list_text.cpp
  store/load.cpp
  store/lock.cpp
  store/segment.cpp
  store/setup.cpp
  store/shell.cpp
  store/sought_key.cpp
  store/trace.cpp
  store/write_back.cpp
  store/zeroed_memory.cpp
  params/accepted.cpp
  params/access_policy.cpp
  params/address_check.cpp
  params/band_setting.cpp
  params/band_wide.cpp
  params/command_flag.cpp
  params/country.cpp
  params/key_table.cpp
  params/number_check.cpp
  params/per_ssid.cpp
  params/phy_mode.cpp
  params/reload_flag.cpp
  params/repeated_value.cpp
  params/setting_table.cpp
  params/ssid_count.cpp
  params/ssid_setting.cpp
  params/vht.cpp
  params/wep_key.cpp
  params/wmm.cpp
  apply/auth_mode.cpp
  apply/band_number.cpp
  apply/commit.cpp
  apply/execute_script.cpp
  apply/fixed_tx_mode.cpp
  apply/interface.cpp
  apply/line_end.cpp
  apply/normalise.cpp
  apply/radio_switch.cpp
  apply/reboot.cpp
  apply/restart.cpp
  apply/runtime_setting.cpp
  apply/script_value.cpp
  apply/snapshot.cpp
  apply/snapshot_rows.cpp
  apply/snapshot_wds.cpp
  apply/wds.cpp
  apply/wds_key.cpp
  driver/ap_count.cpp
  driver/caller_request.cpp
  driver/channel.cpp
  driver/command_text.cpp
  driver/neighbour.cpp
  driver/probe_response.cpp
  driver/process_info.cpp
  driver/radio_load.cpp
  driver/request.cpp
  driver/station_capability.cpp
  driver/station_table.cpp
  driver/wps_access_list.cpp
  driver/wps_pin.cpp
  driver/wps_state.cpp
  wps/daemon.cpp
  wps/pin.cpp
  wps/service.cpp
  wps/setting.cpp
  platform/board_command.cpp
  platform/board_file.cpp
  platform/calibration.cpp
  platform/chip_package.cpp
  platform/constants.cpp
  platform/dfs.cpp
  platform/interface_address.cpp
  platform/multi_ap.cpp
  platform/temperature.cpp)

# What the header declares is exported, and nothing else. The link stops when a name is not defined.
set(WIFIMGR_EXPORT_MAP ${PROJECT_BINARY_DIR}/wifimgr_lib.map)
add_custom_command(OUTPUT ${WIFIMGR_EXPORT_MAP}
  COMMAND ${CMAKE_COMMAND} -D HEADER=${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h -D MAP=${WIFIMGR_EXPORT_MAP}
    -P ${PROJECT_SOURCE_DIR}/cmake/export_map.cmake
  DEPENDS ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h ${PROJECT_SOURCE_DIR}/cmake/export_map.cmake
  COMMENT "Making the export map of the public header"
  VERBATIM)
target_sources(api_lib_wifimgr PRIVATE ${WIFIMGR_EXPORT_MAP})

set_target_properties(api_lib_wifimgr PROPERTIES
  SOVERSION 1
  CXX_VISIBILITY_PRESET hidden
  VISIBILITY_INLINES_HIDDEN ON
  LINK_DEPENDS ${WIFIMGR_EXPORT_MAP}
  # In the build tree the two platform libraries are found beside it. CMake's own build path would end in an empty
  # element, which makes the loader search the current folder.
  BUILD_WITH_INSTALL_RPATH ON
  INSTALL_RPATH "$ORIGIN")
target_include_directories(api_lib_wifimgr
  PUBLIC $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/include> $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}>
  PRIVATE ${PROJECT_SOURCE_DIR})

# Exported functions call each other through the dynamic symbol table, under gcc and clang alike, so that a caller, a
# test or a simulator can stand in for any of them.
target_compile_options(api_lib_wifimgr PRIVATE
  -fno-exceptions -fno-rtti -fno-threadsafe-statics -fsemantic-interposition
  -ffunction-sections -fdata-sections -Wmissing-declarations)
target_link_options(api_lib_wifimgr PRIVATE
  -Wl,--version-script=${WIFIMGR_EXPORT_MAP} -Wl,--no-undefined-version
  -Wl,-z,relro,-z,now,-z,noexecstack -Wl,--build-id=sha1 -Wl,--gc-sections
  -Wl,--as-needed)
if(NOT WIFIMGR_SANITIZE)
  target_link_options(api_lib_wifimgr PRIVATE -Wl,--no-undefined)
endif()

# The gateway's flash counts, and the work is in the kernel and the tools: size before speed. Backtraces follow the frame
# pointers; nothing unwinds through the library, so it carries no tables for it.
set(small_code -Os -fno-omit-frame-pointer -fno-asynchronous-unwind-tables -fno-unwind-tables)
# All of it lies within the reach of one instruction, where the processor has such a one.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(aarch64|arm64)$")
  list(APPEND small_code -mcmodel=tiny)
endif()
# Bounds that the compiler knows are checked at run time; the checks want an optimised build, and cost the file nothing.
set(hardening -U_FORTIFY_SOURCE -D_FORTIFY_SOURCE=2)
# Canaries too, where the guard is the thread's own. Elsewhere it is an object of the dynamic loader, which would become
# a fourth library that is needed; on ARM64 they would also take the file over what the gateway grants.
if(CMAKE_SYSTEM_PROCESSOR MATCHES "^(x86_64|AMD64|i[3-6]86)$")
  list(APPEND hardening -fstack-protector-strong)
  # Small code for copying and clearing is slow code here: a field takes as long as a search through thirty records.
  if(CMAKE_CXX_COMPILER_ID STREQUAL GNU)
    list(APPEND small_code -mstringop-strategy=libcall)
  endif()
endif()
if(NOT WIFIMGR_SANITIZE)
  target_compile_options(api_lib_wifimgr PRIVATE "$<$<CONFIG:Release,MinSizeRel>:${small_code};${hardening}>")
endif()
# Every getter, setter and load goes through these: their loops are worth more than the bytes.
set_source_files_properties(store/attribute.cpp store/dat_line.cpp PROPERTIES
  COMPILE_OPTIONS "$<$<AND:$<CONFIG:Release>,$<NOT:$<BOOL:${WIFIMGR_SANITIZE}>>>:-O2>")
# The binary interface is compared by the debug information, which packages leave out.
target_compile_options(api_lib_wifimgr PRIVATE -g)
# Aligned for pages of 4 KiB, which the gateway's kernel has: room for larger ones would pad the file by up to 60 KiB.
target_link_options(api_lib_wifimgr PRIVATE -Wl,-z,max-page-size=4096)

# Both platform libraries stay needed even while nothing calls into one of them: on a gateway the platform's own take
# their place. Everything else is dropped unless used, which leaves libc alone.
target_link_libraries(api_lib_wifimgr PRIVATE
  wifimgr_warnings wifimgr_sanitizers wifimgr_reproducible
  -Wl,--push-state,--no-as-needed vexa_lib_dbg api_lib_utility -Wl,--pop-state)
