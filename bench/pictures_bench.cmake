# The peer; left out where it is not installed.
pkg_check_modules(PICTURES_TIFF QUIET IMPORTED_TARGET libtiff-4)
if(PICTURES_TIFF_FOUND)
  target_link_libraries(pictures_bench PRIVATE PkgConfig::PICTURES_TIFF)
  target_compile_definitions(pictures_bench PRIVATE LAMPBLACK_BENCH_TIFF)
endif()
