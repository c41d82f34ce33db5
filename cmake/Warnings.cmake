# The warnings that every target of ours is compiled under; both g++ 12 and clang 14 are kept clean.
add_library(vyn_warnings INTERFACE)
target_compile_options(vyn_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror)
