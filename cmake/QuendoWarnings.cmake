# One interface target carries the warnings, so that every target of the project has the same ones.
add_library(quendo_warnings INTERFACE)
target_compile_options(quendo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wnull-dereference -Wformat=2 -Werror)
