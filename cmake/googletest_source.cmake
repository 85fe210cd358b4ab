# GoogleTest from the sources of Debian's googletest package, for targets that Debian has no built one for. Set as
# CMAKE_PROJECT_INCLUDE: find_package(GTest) then builds it as a part of the project.
include(FetchContent)
set(FETCHCONTENT_SOURCE_DIR_GTEST /usr/src/googletest CACHE PATH "The sources of GoogleTest")
set(INSTALL_GTEST OFF CACHE BOOL "GoogleTest is not installed with the library" FORCE)
mark_as_advanced(FETCHCONTENT_SOURCE_DIR_GTEST INSTALL_GTEST)
FetchContent_Declare(GTest SYSTEM OVERRIDE_FIND_PACKAGE)
