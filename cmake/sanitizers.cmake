# Sanitizers for every target that links wifimgr_sanitizers: all of them but what is preloaded into foreign programs.
add_library(wifimgr_sanitizers INTERFACE)
if(WIFIMGR_SANITIZE)
  target_compile_options(wifimgr_sanitizers INTERFACE
    -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer)
  target_link_options(wifimgr_sanitizers INTERFACE -fsanitize=address,undefined)
endif()
