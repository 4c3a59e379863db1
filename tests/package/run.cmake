# Installs the build into a folder of its own, builds the application there and runs it.
set(prefix ${BINARY_DIR}/package/prefix)
foreach(step
    "${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix}"
    "${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/package -B ${BINARY_DIR}/package/build -G Ninja -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_FLAGS=${FLAGS}"
    "${CMAKE_COMMAND} --build ${BINARY_DIR}/package/build"
    "${BINARY_DIR}/package/build/outside")
  separate_arguments(command UNIX_COMMAND "${step}")
  execute_process(COMMAND ${command} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${step}\n${output}")
  endif()
endforeach()
