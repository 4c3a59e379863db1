# One set of warnings and sanitizers for everything built here.
add_compile_options(-Wall -Wextra -Werror -Wno-multichar -fno-strict-aliasing)
if(CMAKE_CXX_COMPILER_ID MATCHES Clang)
  add_compile_options(-Wno-four-char-constants)
endif()

if(LAMPBLACK_SANITIZE)
  add_compile_options(-fsanitize=${LAMPBLACK_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  add_link_options(-fsanitize=${LAMPBLACK_SANITIZE})
endif()
if(LAMPBLACK_FUZZ)
  add_compile_options(-fsanitize=fuzzer-no-link)
endif()
if(CMAKE_CXX_COMPILER_ID STREQUAL GNU AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
  add_compile_options(-Wno-restrict) # that compiler takes a plain std::string concatenation for an overlap
endif()
