# One interface target carries the warnings, so every target of the project has the same ones.
#
# They are errors only where ./test builds: otherwise the next compiler would break a packager's build. The release
# build, which compiles every source, is shared by ./test and ./run. Its further options are in a file that the compiler
# reads (@FILE); scripts/lib/build.sh fills it for one and empties it for the other. If the command line changed
# instead, everything would be compiled anew each time they take turns.
set(QUENDO_WARNING_OPTIONS "" CACHE STRING "Options after the warnings, for instance -Werror; @FILE reads them from a file")
if(QUENDO_WARNING_OPTIONS MATCHES "^@(.+)" AND NOT EXISTS "${CMAKE_MATCH_1}")
  file(WRITE "${CMAKE_MATCH_1}" "")
endif()

add_library(quendo_warnings INTERFACE)
target_compile_options(quendo_warnings INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wsign-conversion -Wnon-virtual-dtor
  -Woverloaded-virtual -Wold-style-cast -Wcast-align -Wnull-dereference -Wformat=2 ${QUENDO_WARNING_OPTIONS})
