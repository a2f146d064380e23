# quendo_add_site(NAME DOMAIN AUTHORITY [CERTIFICATE_AUTHORITY])
#
# A library with the constants of platform/SiteConfiguration.h. Every program links exactly one of them: the
# code around it does not know which. AUTHORITY is the domain, with a port where the site has one of its own.
# CERTIFICATE_AUTHORITY is a file of certificates that stands in for the system's, and is for tests only.
#
# An object library, so that the constants are there wherever it stands among a program's static libraries.
function(quendo_add_site name site_domain site_authority)
  set(site_certificate_authority "${ARGV3}")
  set(source ${CMAKE_BINARY_DIR}/generated/${name}/SiteConfiguration.cpp)
  configure_file(${CMAKE_SOURCE_DIR}/src/platform/SiteConfiguration.cpp.in ${source} @ONLY)
  add_library(${name} OBJECT ${source})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE quendo_warnings)
endfunction()
