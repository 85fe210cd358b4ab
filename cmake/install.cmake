# What is installed, and how others find it: pkg-config and find_package. Components are packages: runtime, dev,
# platform (the stand-ins of the platform's libraries) and tools.
include(CMakePackageConfigHelpers)

install(TARGETS api_lib_wifimgr
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR} COMPONENT runtime NAMELINK_COMPONENT dev)
# On a gateway the loader's own path counts.
install(CODE "file(RPATH_REMOVE FILE
  \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_LIBDIR}/libapi_lib_wifimgr.so.1\")" COMPONENT runtime)
install(FILES ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h ${PROJECT_SOURCE_DIR}/include/wifimgr_settings.h
  DESTINATION ${CMAKE_INSTALL_INCLUDEDIR} COMPONENT dev)

# Who links a program needs the platform's libraries too. For machines without them the stand-ins lie where linkers are
# sent and no loader looks, so that they never take the place of a gateway's own.
install(TARGETS vexa_lib_dbg api_lib_utility
  LIBRARY DESTINATION ${CMAKE_INSTALL_LIBDIR}/wifimgr COMPONENT dev NAMELINK_SKIP)

# Both find the rest relative to themselves, so that a staging root serves as well as the place it is made for.
file(RELATIVE_PATH WIFIMGR_PC_TO_PREFIX /prefix/${CMAKE_INSTALL_LIBDIR}/pkgconfig /prefix)
configure_file(${PROJECT_SOURCE_DIR}/packaging/wifimgr.pc.in ${PROJECT_BINARY_DIR}/packaging/wifimgr.pc @ONLY)
install(FILES ${PROJECT_BINARY_DIR}/packaging/wifimgr.pc DESTINATION ${CMAKE_INSTALL_LIBDIR}/pkgconfig COMPONENT dev)

set(WIFIMGR_CMAKE_DIR ${CMAKE_INSTALL_LIBDIR}/cmake/wifimgr)
configure_package_config_file(
  ${PROJECT_SOURCE_DIR}/packaging/wifimgr-config.cmake.in ${PROJECT_BINARY_DIR}/packaging/wifimgr-config.cmake
  INSTALL_DESTINATION ${WIFIMGR_CMAKE_DIR}
  PATH_VARS CMAKE_INSTALL_INCLUDEDIR CMAKE_INSTALL_LIBDIR
  NO_CHECK_REQUIRED_COMPONENTS_MACRO)
write_basic_package_version_file(${PROJECT_BINARY_DIR}/packaging/wifimgr-config-version.cmake
  COMPATIBILITY SameMajorVersion)
install(FILES
  ${PROJECT_BINARY_DIR}/packaging/wifimgr-config.cmake ${PROJECT_BINARY_DIR}/packaging/wifimgr-config-version.cmake
  DESTINATION ${WIFIMGR_CMAKE_DIR} COMPONENT dev)

install(DIRECTORY ${PROJECT_SOURCE_DIR}/man/ DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT dev
  FILES_MATCHING PATTERN "*.3")

# A manual page for every exported name, made from the header. The machine's own awk makes them, for every processor.
find_program(WIFIMGR_AWK awk REQUIRED NO_CMAKE_FIND_ROOT_PATH)
set(man3 ${PROJECT_BINARY_DIR}/man3)
add_custom_command(OUTPUT ${man3}.made
  COMMAND ${CMAKE_COMMAND} -E rm -rf ${man3}
  COMMAND ${CMAKE_COMMAND} -E make_directory ${man3}
  COMMAND ${WIFIMGR_AWK} -v out=${man3} -f docs/header.awk -f docs/man3.awk include/wifimgr_lib.h
  COMMAND ${CMAKE_COMMAND} -E touch ${man3}.made
  WORKING_DIRECTORY ${PROJECT_SOURCE_DIR}
  DEPENDS ${PROJECT_SOURCE_DIR}/include/wifimgr_lib.h ${PROJECT_SOURCE_DIR}/docs/header.awk
    ${PROJECT_SOURCE_DIR}/docs/man3.awk
  COMMENT "Making manual pages from the header"
  VERBATIM)
add_custom_target(man3 ALL DEPENDS ${man3}.made)
install(DIRECTORY ${man3} DESTINATION ${CMAKE_INSTALL_MANDIR} COMPONENT dev)

include(${PROJECT_SOURCE_DIR}/cmake/settings.cmake)
install(FILES ${WIFIMGR_SETTINGS_MANUAL} DESTINATION ${CMAKE_INSTALL_MANDIR}/man3 COMPONENT dev)
install(FILES ${WIFIMGR_SETTINGS_PAGE} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/wifimgr COMPONENT dev)
