# The libraries of the core: ICU::uc, simdjson::simdjson, quendo_uriparser and Threads::Threads.
find_package(Threads REQUIRED)

if(QUENDO_CHECK_MACOS)
  # Only the headers are needed: nothing that is linked here runs. The parser's code for this processor keeps the
  # cross compiler busy for ever.
  foreach(library ICU::uc simdjson::simdjson quendo_uriparser)
    add_library(${library} INTERFACE IMPORTED)
  endforeach()
  target_compile_definitions(simdjson::simdjson INTERFACE SIMDJSON_IMPLEMENTATION_ARM64=0
                                                          SIMDJSON_IMPLEMENTATION_FALLBACK=1)
  return()
endif()

if(APPLE)
  # Homebrew keeps its ICU away from the system's. Static libraries where there are any; a bundle takes the others
  # along.
  find_program(brew brew)
  if(brew)
    foreach(formula icu4c simdjson uriparser)
      execute_process(COMMAND ${brew} --prefix ${formula} OUTPUT_VARIABLE prefix OUTPUT_STRIP_TRAILING_WHITESPACE)
      list(APPEND CMAKE_PREFIX_PATH ${prefix})
    endforeach()
  endif()
  list(PREPEND CMAKE_FIND_LIBRARY_SUFFIXES .a)
  find_package(ICU REQUIRED COMPONENTS uc data)
  target_link_libraries(ICU::uc INTERFACE ICU::data)
  find_library(QUENDO_SIMDJSON simdjson REQUIRED)
  find_path(QUENDO_SIMDJSON_HEADERS simdjson.h REQUIRED)
  add_library(simdjson::simdjson INTERFACE IMPORTED)
  target_link_libraries(simdjson::simdjson INTERFACE ${QUENDO_SIMDJSON})
  target_include_directories(simdjson::simdjson INTERFACE ${QUENDO_SIMDJSON_HEADERS})
  find_library(QUENDO_URIPARSER uriparser REQUIRED)
  find_path(QUENDO_URIPARSER_HEADERS uriparser/Uri.h REQUIRED)
  add_library(quendo_uriparser INTERFACE IMPORTED)
  target_link_libraries(quendo_uriparser INTERFACE ${QUENDO_URIPARSER})
  target_include_directories(quendo_uriparser INTERFACE ${QUENDO_URIPARSER_HEADERS})
else()
  find_package(PkgConfig REQUIRED)
  find_package(ICU REQUIRED COMPONENTS uc)
  find_package(simdjson REQUIRED)
  pkg_check_modules(URIPARSER REQUIRED IMPORTED_TARGET liburiparser)
  add_library(quendo_uriparser ALIAS PkgConfig::URIPARSER)
endif()
