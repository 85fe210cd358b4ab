# Read by CPack before it packs: which versions of the C and C++ libraries each package needs. The programs are those of
# the build, the examples among them, so that an answer may be too new but never too old.

# The newest version of a library's symbols that the files ask for.
function(newest_symbol_version result prefix)
  set(newest 0)
  foreach(file ${ARGN})
    execute_process(COMMAND ${CPACK_WIFIMGR_READELF} -VW ${file} OUTPUT_VARIABLE text COMMAND_ERROR_IS_FATAL ANY)
    string(REGEX MATCHALL "Name: ${prefix}_[0-9.]+" names "${text}")
    foreach(name ${names})
      string(REGEX REPLACE ".*_" "" version ${name})
      if(version VERSION_GREATER newest)
        set(newest ${version})
      endif()
    endforeach()
  endforeach()
  set(${result} ${newest} PARENT_SCOPE)
endfunction()

set(folder ${CPACK_WIFIMGR_BUILD})
newest_symbol_version(libc GLIBC ${folder}/lib/libapi_lib_wifimgr.so.1)
set(CPACK_DEBIAN_RUNTIME_PACKAGE_DEPENDS "libc6 (>= ${libc})")
newest_symbol_version(libc GLIBC ${folder}/lib/libvexa_lib_dbg.so.1 ${folder}/lib/libapi_lib_utility.so.1)
set(CPACK_DEBIAN_PLATFORM_PACKAGE_DEPENDS "libc6 (>= ${libc})")

file(GLOB programs ${folder}/bin/* ${folder}/libexec/gateway-sim/*)
newest_symbol_version(libc GLIBC ${programs})
set(CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS
  "libc6 (>= ${libc}), libgcc-s1, libstdc++6 (>= ${CPACK_WIFIMGR_COMPILER}), net-tools, bridge-utils")
if(EXISTS ${folder}/bin/wlanctl)
  string(APPEND CPACK_DEBIAN_TOOLS_PACKAGE_DEPENDS ", libapi-lib-wifimgr1 (= ${CPACK_PACKAGE_VERSION})")
endif()
