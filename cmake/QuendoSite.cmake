# quendo_add_site(NAME DOMAIN AUTHORITY [CERTIFICATE_AUTHORITY])
#
# A library with the constants of platform/SiteConfiguration.h. Every program links exactly one; the rest of
# the code does not depend on which. AUTHORITY is the domain, plus the port if the site uses its own.
# CERTIFICATE_AUTHORITY is a certificate file that replaces the system's authorities, for tests only.
#
# An object library, so that link order among static libraries does not matter.
function(quendo_add_site name site_domain site_authority)
  set(site_certificate_authority "${ARGV3}")
  set(source ${CMAKE_BINARY_DIR}/generated/${name}/SiteConfiguration.cpp)
  configure_file(${CMAKE_SOURCE_DIR}/src/platform/SiteConfiguration.cpp.in ${source} @ONLY)
  add_library(${name} OBJECT ${source})
  target_include_directories(${name} PRIVATE ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${name} PRIVATE quendo_warnings)
endfunction()
