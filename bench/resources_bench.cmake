# The peer; left out where it is not installed.
pkg_check_modules(RESOURCES_SQLITE QUIET IMPORTED_TARGET sqlite3)
if(RESOURCES_SQLITE_FOUND)
  target_link_libraries(resources_bench PRIVATE PkgConfig::RESOURCES_SQLITE)
  target_compile_definitions(resources_bench PRIVATE LAMPBLACK_BENCH_SQLITE)
endif()
