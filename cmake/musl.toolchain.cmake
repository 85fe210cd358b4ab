# The musl C library, as Debian's musl-tools has it: for C alone. The C++ library's headers of the machine serve the library,
# which uses nothing of a C++ runtime; programs in C++ cannot be linked.
set(CMAKE_C_COMPILER musl-gcc)
set(CMAKE_CXX_COMPILER g++)
set(WIFIMGR_CXX_RUNTIME OFF CACHE BOOL "Programs in C++ can be linked")

set(libraries /usr/lib/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-musl)
execute_process(COMMAND g++ -dumpversion OUTPUT_VARIABLE version OUTPUT_STRIP_TRAILING_WHITESPACE)
string(JOIN " " CMAKE_CXX_FLAGS_INIT
  -specs=${libraries}/musl-gcc.specs
  -isystem ${CMAKE_CURRENT_LIST_DIR}/musl
  -isystem /usr/include/c++/${version}
  -isystem /usr/include/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu/c++/${version}
  -D__locale_t=locale_t)
set(CMAKE_CXX_STANDARD_LIBRARIES_INIT "-lc -lgcc")
set(CMAKE_SHARED_LINKER_FLAGS_INIT -nodefaultlibs)
# CMake's own first test links a program in C++.
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)
