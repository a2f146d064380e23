# quendo_make_licenses(OUTPUT LIBRARIES [TEXT...]): a rule that makes the list of all licences that come with the
# program: of its libraries, of the packages in its page, and, where the libraries are in the same bundle, their
# TEXTs. LIBRARIES is a file like packaging/linked-libraries.txt. A target of the same directory has to depend on OUTPUT
# and on quendo_page.
function(quendo_make_licenses output libraries)
  set(script ${CMAKE_SOURCE_DIR}/cmake/make-licenses.cmake)
  set(page ${CMAKE_BINARY_DIR}/${CMAKE_INSTALL_DATADIR}/quendo/web/licenses.txt)
  list(JOIN ARGN "|" texts)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${CMAKE_COMMAND} -DOUTPUT=${output} -DLIBRARIES=${libraries} -DPAGE=${page} -DTEXTS=${texts} -P ${script}
    DEPENDS ${libraries} ${script} ${ARGN} ${CMAKE_BINARY_DIR}/web/page.stamp
    COMMENT "Collecting the licences"
    VERBATIM)
endfunction()
