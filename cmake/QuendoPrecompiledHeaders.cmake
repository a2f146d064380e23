# quendo_precompile(TARGET HEADER...): compiles headers once for a target, where QUENDO_PRECOMPILE_HEADERS says so: in
# the sanitizers' builds, whose compilers would read little else. The release build reads them in each file, and so
# finds the includes that are missing.
option(QUENDO_PRECOMPILE_HEADERS "Compile the most included headers once for each target" OFF)

function(quendo_precompile target)
  if(QUENDO_PRECOMPILE_HEADERS)
    target_precompile_headers(${target} PRIVATE ${ARGN})
  endif()
endfunction()

set(QUENDO_STANDARD_HEADERS <algorithm> <array> <chrono> <filesystem> <functional> <map> <memory> <optional> <string>
                            <string_view> <utility> <variant> <vector>)
