# Warnings for every target of the project; link wifimgr_warnings privately.
add_library(wifimgr_warnings INTERFACE)
target_compile_options(wifimgr_warnings INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
if(WIFIMGR_WERROR)
  target_compile_options(wifimgr_warnings INTERFACE -Werror)
endif()
