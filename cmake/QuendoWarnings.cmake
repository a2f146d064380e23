# One interface target carries the warnings for all targets.
#
# Warnings are errors only in ./test: otherwise the next compiler release would break a packager's build.
# ./test and ./run share the release build. The extra options are in a response file (@FILE) that
# scripts/lib/build.sh fills for one and empties for the other: if the command line itself changed, each
# switch would recompile everything.
set(QUENDO_WARNING_OPTIONS "" CACHE STRING "Options after the warnings, for instance -Werror; @FILE reads them from a file")
if(QUENDO_WARNING_OPTIONS MATCHES "^@(.+)" AND NOT EXISTS "${CMAKE_MATCH_1}")
  file(WRITE "${CMAKE_MATCH_1}" "")
endif()

add_library(quendo_warnings INTERFACE)
target_compile_options(quendo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wnull-dereference -Wformat=2 ${QUENDO_WARNING_OPTIONS})
