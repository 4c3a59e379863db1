# lampblack_floor(NAME [FLOORS lower ...] [LIBRARIES target ...])
#
# Declares one folder of the platform as an object library `floor_NAME`, made of every source in the
# folder. Each *_test.cpp beside the code becomes one test program, and each *_fuzz.cpp a fuzz target;
# both link this floor and the floors below it and nothing else, so that a call upward fails to link.
function(lampblack_floor name)
  cmake_parse_arguments(ARG "" "" "FLOORS;LIBRARIES" ${ARGN})
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_CURRENT_SOURCE_DIR}/*.cpp)
  set(tests ${sources})
  set(fuzzers ${sources})
  list(FILTER sources EXCLUDE REGEX "_(test|fuzz)\\.cpp$")
  list(FILTER tests INCLUDE REGEX "_test\\.cpp$")
  list(FILTER fuzzers INCLUDE REGEX "_fuzz\\.cpp$")

  if(NOT sources)
    file(CONFIGURE OUTPUT empty.cpp CONTENT "")
    set(sources ${CMAKE_CURRENT_BINARY_DIR}/empty.cpp)
  endif()
  add_library(floor_${name} OBJECT ${sources})
  target_include_directories(floor_${name} PUBLIC
    ${PROJECT_SOURCE_DIR}/carbon/include ${PROJECT_SOURCE_DIR}/carbon ${PROJECT_SOURCE_DIR}/host/include
    ${PROJECT_SOURCE_DIR}/host/include/public)
  target_link_libraries(floor_${name} PUBLIC ${ARG_LIBRARIES})

  set(closure ${ARG_FLOORS})
  foreach(lower ${ARG_FLOORS})
    get_property(below GLOBAL PROPERTY LAMPBLACK_CLOSURE_${lower})
    list(APPEND closure ${below})
  endforeach()
  list(REMOVE_DUPLICATES closure)
  set_property(GLOBAL PROPERTY LAMPBLACK_CLOSURE_${name} ${closure})
  foreach(lower ${closure})
    # What a lower floor's headers include must be found; tools/check-layers says who may include it himself.
    target_include_directories(floor_${name} PUBLIC
      $<TARGET_PROPERTY:floor_${lower},INTERFACE_INCLUDE_DIRECTORIES>)
    get_target_property(libraries floor_${lower} INTERFACE_LINK_LIBRARIES)
    if(libraries)
      target_link_libraries(floor_${name} PUBLIC ${libraries})
    endif()
  endforeach()

  set(objects floor_${name})
  foreach(lower ${closure})
    list(APPEND objects floor_${lower})
  endforeach()

  if(LAMPBLACK_TESTS AND tests)
    lampblack_test_program(${name}_test SOURCES ${tests} LIBRARIES ${objects})
    target_compile_definitions(${name}_test PRIVATE LAMPBLACK_BINARY_DIR="${PROJECT_BINARY_DIR}")
    add_test(NAME carbon.${name} COMMAND ${name}_test)
  endif()
  if(LAMPBLACK_FUZZ)
    foreach(source ${fuzzers})
      get_filename_component(target ${source} NAME_WE)
      add_executable(${target} ${source})
      target_link_libraries(${target} PRIVATE ${objects})
      target_link_options(${target} PRIVATE -fsanitize=fuzzer)
    endforeach()
  endif()
endfunction()
