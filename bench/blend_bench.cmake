target_link_libraries(blend_bench PRIVATE PkgConfig::PIXMAN)
if(TARGET PkgConfig::SDL2) # a peer; left out where it is not found
  target_link_libraries(blend_bench PRIVATE PkgConfig::SDL2)
  target_compile_definitions(blend_bench PRIVATE LAMPBLACK_BENCH_SDL)
endif()
