# What every target of the project compiles with.
add_library(bexlow_options INTERFACE)
target_compile_options(bexlow_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror
  -Wno-error=deprecated-declarations  # a newer Qt must not stop the build of this one
  $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>)  # g++ 12 sees overlaps in std::string concatenation that are not there
if(BEXLOW_SANITIZE)
  set(flags -fsanitize=address,undefined -fno-sanitize-recover=all -fno-omit-frame-pointer -O1 -g1)
  target_compile_options(bexlow_options INTERFACE ${flags})
  target_link_options(bexlow_options INTERFACE -fsanitize=address,undefined)
endif()
if(BEXLOW_FUZZ)
  target_compile_options(bexlow_options INTERFACE -fsanitize=fuzzer-no-link,float-cast-overflow)
  target_compile_definitions(bexlow_options INTERFACE _GLIBCXX_ASSERTIONS)
  target_link_options(bexlow_options INTERFACE -fsanitize=float-cast-overflow)
endif()

find_program(CCACHE ccache)
if(CCACHE AND NOT CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_CXX_COMPILER_LAUNCHER ${CCACHE})
endif()
