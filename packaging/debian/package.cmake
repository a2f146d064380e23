# The Debian package, by CPack. Its libraries are found by dpkg-shlibdeps, what it needs besides in scripts/packages.txt.
file(STRINGS ${CMAKE_SOURCE_DIR}/scripts/packages.txt lines REGEX "^(run|recommend) ")
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libwebkitgtk-6.0-4 (>= ${QUENDO_WEBKITGTK_VERSION})")
# The program works without a session bus, but then a second start cannot reach the first.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus")
foreach(line IN LISTS lines)
  string(REGEX REPLACE " +" ";" line "${line}")
  list(GET line 0 group)
  list(GET line 1 package)
  if(group STREQUAL run)
    list(APPEND CPACK_DEBIAN_PACKAGE_DEPENDS ${package})
  else()
    list(APPEND CPACK_DEBIAN_PACKAGE_RECOMMENDS ${package})
  endif()
endforeach()
list(JOIN CPACK_DEBIAN_PACKAGE_DEPENDS ", " CPACK_DEBIAN_PACKAGE_DEPENDS)
list(JOIN CPACK_DEBIAN_PACKAGE_RECOMMENDS ", " CPACK_DEBIAN_PACKAGE_RECOMMENDS)

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME quendo)
set(CPACK_PACKAGE_VENDOR Quendo)
set(CPACK_PACKAGE_CONTACT "Quendo <packages@${QUENDO_SITE_DOMAIN}>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "calm note editor that never loses what was typed")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Quendo keeps notes in a searchable list, with tags, links between notes and
earlier versions of each, and edits Markdown, plain text and code with a
preview beside it. Notes are saved while they are written, as one document
with a backup beside it, and quitting waits until the last word is on disk.
.
The interface is in English, Brazilian Portuguese and Spanish.")
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "https://${QUENDO_SITE_DOMAIN}")
set(CPACK_DEBIAN_PACKAGE_SECTION editors)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_CURRENT_LIST_DIR}/stage.cmake)
set(CPACK_QUENDO_SOURCE_DIR ${CMAKE_SOURCE_DIR})
set(CPACK_QUENDO_STRIP ${CMAKE_STRIP})
include(CPack)
