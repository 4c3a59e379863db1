# Installs the build into a folder of its own, builds the application there and runs it; with Clang again, where it is
# installed and nothing is instrumented.
set(prefix ${BINARY_DIR}/package/prefix)
set(steps
    "${CMAKE_COMMAND} --install ${BINARY_DIR} --prefix ${prefix}"
    "${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/package -B ${BINARY_DIR}/package/build -G Ninja -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_FLAGS=${FLAGS}"
    "${CMAKE_COMMAND} --build ${BINARY_DIR}/package/build"
    "${BINARY_DIR}/package/build/outside"
    "${BINARY_DIR}/package/build/old")
find_program(clang NAMES clang++ clang++-14)
if(clang AND NOT FLAGS)
  list(APPEND steps
    "${CMAKE_COMMAND} -S ${SOURCE_DIR}/tests/package -B ${BINARY_DIR}/package/clang -G Ninja -DCMAKE_PREFIX_PATH=${prefix} -DCMAKE_CXX_COMPILER=${clang}"
    "${CMAKE_COMMAND} --build ${BINARY_DIR}/package/clang"
    "${BINARY_DIR}/package/clang/outside"
    "${BINARY_DIR}/package/clang/old")
endif()
foreach(step IN LISTS steps)
  separate_arguments(command UNIX_COMMAND "${step}")
  execute_process(COMMAND ${command} RESULT_VARIABLE result OUTPUT_VARIABLE output ERROR_VARIABLE output)
  if(NOT result EQUAL 0)
    message(FATAL_ERROR "${step}\n${output}")
  endif()
endforeach()
