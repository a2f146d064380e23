# Adds what only a Debian package has to the tree that CPack packs: compressed manual pages, the changelog, the copyright
# file, the argued exceptions to lintian's rules. Takes out the compiler's comment, which no Debian program has.
set(usr ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/usr)
set(here ${CPACK_QUENDO_SOURCE_DIR}/packaging/debian)
set(documents ${usr}/share/doc/${CPACK_PACKAGE_NAME})
file(MAKE_DIRECTORY ${documents})

# CPack has installed into a folder of its own. Files that come out of an archive have the permissions of its maker.
set(CMAKE_INSTALL_PREFIX ${CPACK_PACKAGING_INSTALL_PREFIX})
configure_file(${CPACK_QUENDO_SOURCE_DIR}/packaging/com.quendo.Quendo.service.in
               ${usr}/share/dbus-1/services/com.quendo.Quendo.service @ONLY NO_SOURCE_PERMISSIONS)

# Without the name and the time, which would differ from one build to the next.
function(compress file)
  execute_process(COMMAND gzip -9n ${file} COMMAND_ERROR_IS_FATAL ANY)
endfunction()

execute_process(COMMAND ${CPACK_QUENDO_STRIP} --remove-section=.comment ${usr}/bin/quendo COMMAND_ERROR_IS_FATAL ANY)

file(GLOB_RECURSE manual_pages ${usr}/share/man/*.1)
foreach(page IN LISTS manual_pages)
  compress(${page})
endforeach()

# One entry a release, newest first, from the same list that software centres show.
file(READ ${usr}/share/metainfo/com.quendo.Quendo.metainfo.xml metainfo)
string(REGEX MATCHALL "<release version=\"[^\"]+\" date=\"[^\"]+\"" releases "${metainfo}")
set(changelog)
foreach(release IN LISTS releases)
  string(REGEX REPLACE ".*version=\"([^\"]+)\" date=\"([^\"]+)\".*" "\\1;\\2" release "${release}")
  list(GET release 0 version)
  list(GET release 1 date)
  execute_process(COMMAND date --utc --rfc-email --date=${date} OUTPUT_VARIABLE date OUTPUT_STRIP_TRAILING_WHITESPACE
                  COMMAND_ERROR_IS_FATAL ANY)
  string(APPEND changelog "quendo (${version}) stable; urgency=medium\n\n  * Release ${version}.\n\n"
                          " -- ${CPACK_PACKAGE_CONTACT}  ${date}\n\n")
endforeach()
file(WRITE ${documents}/changelog "${changelog}")
compress(${documents}/changelog)

file(READ ${here}/copyright copyright)
file(READ ${usr}/share/quendo/licenses.txt licenses)
file(WRITE ${documents}/copyright "${copyright}\n${licenses}")

configure_file(${here}/lintian-overrides ${usr}/share/lintian/overrides/${CPACK_PACKAGE_NAME}
               COPYONLY NO_SOURCE_PERMISSIONS)
