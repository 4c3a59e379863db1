# The peers; one that is not installed is left out.
find_path(BOOST_RANDOM_INCLUDE boost/random/mersenne_twister.hpp)
if(BOOST_RANDOM_INCLUDE)
  target_include_directories(random_bench SYSTEM PRIVATE ${BOOST_RANDOM_INCLUDE})
  target_compile_definitions(random_bench PRIVATE LAMPBLACK_BENCH_BOOST)
endif()
