# The installed library, as an integrator meets it. Under the sanitizers it is not for them.
if(NOT WIFIMGR_SANITIZE)
  foreach(check files library pkg_config find_package manual)
    add_test(NAME install.${check} COMMAND sh ${CMAKE_CURRENT_LIST_DIR}/staging.sh ${check}
      ${CMAKE_COMMAND} ${PROJECT_SOURCE_DIR} ${PROJECT_BINARY_DIR}
      ${CMAKE_C_COMPILER} ${CMAKE_CXX_COMPILER} ${CMAKE_READELF} ${CMAKE_CROSSCOMPILING_EMULATOR})
    set_tests_properties(install.${check} PROPERTIES TIMEOUT 120)
  endforeach()
endif()
