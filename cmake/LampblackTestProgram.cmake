# lampblack_test_program(NAME SOURCES file ... [LIBRARIES target ...] [OWN_MAIN])
#
# A program of doctest cases with the entry that all of them share, unless its sources bring one. Tests are compiled more
# often than they are run, and their macros take the optimiser long: it leaves them alone.
add_library(test_main OBJECT ${PROJECT_SOURCE_DIR}/tests/main.cpp)
target_include_directories(test_main PRIVATE
  ${PROJECT_SOURCE_DIR}/tests ${PROJECT_SOURCE_DIR}/host/include/public ${PROJECT_SOURCE_DIR}/carbon/include)

function(lampblack_test_program name)
  cmake_parse_arguments(ARG "OWN_MAIN" "" "SOURCES;LIBRARIES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  if(NOT ARG_OWN_MAIN)
    target_sources(${name} PRIVATE $<TARGET_OBJECTS:test_main>)
  endif()
  target_link_libraries(${name} PRIVATE ${ARG_LIBRARIES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  target_compile_definitions(${name} PRIVATE LAMPBLACK_SOURCE_DIR="${PROJECT_SOURCE_DIR}")
  target_compile_options(${name} PRIVATE $<$<CONFIG:Debug>:-O0>)
endfunction()
