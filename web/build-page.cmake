# Builds the page into OUTPUT. A script of its own, so that a missing package directory is reported in
# words instead of as a failed import deep inside the bundler.
if(NOT EXISTS ${SOURCE}/node_modules/.package-lock.json)
  message(FATAL_ERROR "The page's packages are not installed. Run scripts/setup, or npm ci in web/.")
endif()

# What an earlier build left there must not be shipped with this one.
file(REMOVE_RECURSE ${OUTPUT})
file(MAKE_DIRECTORY ${OUTPUT})
execute_process(COMMAND ${NODE} build.mjs --outdir ${OUTPUT} WORKING_DIRECTORY ${SOURCE} RESULT_VARIABLE status
                OUTPUT_VARIABLE output ERROR_VARIABLE output)
if(NOT status EQUAL 0)
  message(FATAL_ERROR "The page could not be built:\n${output}")
endif()
if(NOT EXISTS ${OUTPUT}/index.html)
  message(FATAL_ERROR "The page was built without an index.html.")
endif()
file(TOUCH ${STAMP})
