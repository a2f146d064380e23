# The parts of the Mac's application bundle that are made, not compiled. They work on every platform, which lets
# tests/build check them.

# quendo_configure_info_plist(OUTPUT): the bundle's Info.plist, with the project's version.
function(quendo_configure_info_plist output)
  configure_file(${CMAKE_CURRENT_FUNCTION_LIST_DIR}/../packaging/macos/Info.plist.in ${output} @ONLY)
endfunction()

# quendo_make_icns(OUTPUT): a rule that makes the icon file from the drawing in packaging/. A target of the
# same directory has to list OUTPUT among its sources.
function(quendo_make_icns output)
  find_program(QUENDO_NODE NAMES node nodejs REQUIRED DOC "The Node that builds the page")
  cmake_path(GET CMAKE_CURRENT_FUNCTION_LIST_DIR PARENT_PATH root)
  set(drawing ${root}/packaging/icons/com.quendo.Quendo.svg)
  set(script ${root}/web/scripts/make-icns.mjs)
  add_custom_command(
    OUTPUT ${output}
    COMMAND ${QUENDO_NODE} ${script} ${drawing} ${output}
    DEPENDS ${drawing} ${script}
    COMMENT "Drawing the icon"
    VERBATIM)
endfunction()
