target_link_libraries(quickdraw_bench PRIVATE PkgConfig::PIXMAN)
