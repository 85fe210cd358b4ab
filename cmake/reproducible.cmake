# The same sources give the same library wherever it is built: no path of the machine gets into what links
# wifimgr_reproducible.
add_library(wifimgr_reproducible INTERFACE)
target_compile_options(wifimgr_reproducible INTERFACE
  -Wdate-time -ffile-prefix-map=${PROJECT_SOURCE_DIR}=. -ffile-prefix-map=${PROJECT_BINARY_DIR}=build)
