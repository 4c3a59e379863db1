# lampblack_add_application(NAME SOURCES file ... [RESOURCES file ...] [SIGNATURE 'ABCD'])
#
# Builds an application from its sources and its resources. A resource file may be readable text
# (*.r, compiled by the rsrc tool) or a resource file in any form that the platform reads; they are merged
# into NAME.rsrc beside the executable, where the application finds it when it starts. SIGNATURE is the
# four-character creator code of the application and of that file.
function(lampblack_add_application name)
  cmake_parse_arguments(ARG "" "SIGNATURE" "SOURCES;RESOURCES" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE Lampblack::toolkit Lampblack::carbon)
  # Words that the compilers of that time brought along, for sources that use them.
  target_compile_definitions(${name} PRIVATE pascal= nil=NULL)
  # "\pText", which Clang alone understands.
  target_compile_options(${name} PRIVATE $<$<COMPILE_LANG_AND_ID:C,Clang>:-fpascal-strings>
                                         $<$<COMPILE_LANG_AND_ID:CXX,Clang>:-fpascal-strings>)
  if(NOT ARG_RESOURCES)
    return()
  endif()
  list(TRANSFORM ARG_RESOURCES PREPEND "${CMAKE_CURRENT_SOURCE_DIR}/" REGEX "^[^/]")
  set(options)
  if(ARG_SIGNATURE)
    set(options --creator ${ARG_SIGNATURE} --type APPL)
  endif()
  # The folder of the executable: CMake lets no output of a command depend on a target's own.
  set(folder ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
  if(NOT folder)
    set(folder ${CMAKE_CURRENT_BINARY_DIR})
  endif()
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${folder})
  set(output ${folder}/${name}.rsrc)
  set(rule ${CMAKE_CURRENT_BINARY_DIR}/${name}.rsrc.d) # which files the descriptions include
  add_custom_command(
    OUTPUT ${output}
    COMMAND $<TARGET_FILE:Lampblack::rsrc> build ${ARG_RESOURCES} ${options} -o ${output} -M ${rule}
    DEPENDS ${ARG_RESOURCES} Lampblack::rsrc
    DEPFILE ${rule}
    COMMENT "Building the resources of ${name}"
    VERBATIM)
  add_custom_target(${name}_resources ALL DEPENDS ${output})
  add_dependencies(${name} ${name}_resources)
endfunction()
