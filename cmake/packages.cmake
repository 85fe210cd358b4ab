# Debian packages with CPack: cpack -G DEB, or make package for both processors.
if(CMAKE_SYSTEM_PROCESSOR STREQUAL aarch64)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE arm64)
elseif(CMAKE_SYSTEM_PROCESSOR STREQUAL x86_64)
  set(CPACK_DEBIAN_PACKAGE_ARCHITECTURE amd64)
endif()

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME libapi-lib-wifimgr)
set(CPACK_PACKAGE_VENDOR "${PROJECT_NAME}")
set(CPACK_PACKAGE_CONTACT "wifimgr maintainers <maintainers@wifimgr.invalid>")
set(CPACK_PACKAGE_DIRECTORY ${PROJECT_BINARY_DIR}/packages)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_GROUPING IGNORE)
set(CPACK_COMPONENTS_ALL runtime dev platform)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION net)
# What a component needs of the C library is read from its files when they are packed.
set(CPACK_PROJECT_CONFIG_FILE ${PROJECT_SOURCE_DIR}/packaging/depends.cmake)
set(CPACK_WIFIMGR_READELF ${CMAKE_READELF})
set(CPACK_WIFIMGR_BUILD ${PROJECT_BINARY_DIR})
string(REGEX MATCH "^[0-9]+" CPACK_WIFIMGR_COMPILER ${CMAKE_CXX_COMPILER_VERSION})

set(CPACK_DEBIAN_RUNTIME_PACKAGE_NAME libapi-lib-wifimgr1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_SUGGESTS "libapi-lib-wifimgr-platform1")
set(CPACK_DEBIAN_RUNTIME_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_COMPONENT_RUNTIME_DESCRIPTION "${PROJECT_DESCRIPTION}
 The shared library that management processes link. It needs two libraries of
 the gateway's platform, libvexa_lib_dbg.so.1 and libapi_lib_utility.so.1.")

set(CPACK_DEBIAN_DEV_PACKAGE_NAME libapi-lib-wifimgr-dev)
set(CPACK_DEBIAN_DEV_PACKAGE_SECTION libdevel)
set(CPACK_DEBIAN_DEV_PACKAGE_DEPENDS "libapi-lib-wifimgr1 (= ${PROJECT_VERSION})")
set(CPACK_DEBIAN_DEV_PACKAGE_RECOMMENDS "libapi-lib-wifimgr-platform1")
set(CPACK_COMPONENT_DEV_DESCRIPTION "${PROJECT_DESCRIPTION} (development files)
 Header, pkg-config file, CMake package and manual pages.")

set(CPACK_DEBIAN_PLATFORM_PACKAGE_NAME libapi-lib-wifimgr-platform1)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_SECTION libs)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_CONTROL_EXTRA ${PROJECT_SOURCE_DIR}/packaging/triggers)
set(CPACK_COMPONENT_PLATFORM_DESCRIPTION "${PROJECT_DESCRIPTION} (stand-ins of the platform)
 libvexa_lib_dbg.so.1 and libapi_lib_utility.so.1 for machines that are not the
 gateway, which has its own.")

if(TARGET gateway-sim)
  list(APPEND CPACK_COMPONENTS_ALL tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_NAME wifimgr-tools)
  set(CPACK_DEBIAN_TOOLS_PACKAGE_RECOMMENDS "libapi-lib-wifimgr-platform1")
  set(CPACK_COMPONENT_TOOLS_DESCRIPTION "${PROJECT_DESCRIPTION} (tools)
 wlanctl shows, checks, changes and applies the settings of both radios.
 gateway-sim is a simulated gateway in namespaces of its own.")
endif()

include(CPack)
