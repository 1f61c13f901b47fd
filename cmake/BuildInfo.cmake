# What is built, for the about box. Run as a script before each build: writes OUTPUT, and touches it only when that has
# changed. Without git, or outside a checkout, the revision is empty.
find_package(Git QUIET)
set(BUILD_REVISION "")
set(BUILD_DATE "")
if(GIT_FOUND)
  execute_process(COMMAND ${GIT_EXECUTABLE} -C "${SOURCE_DIR}" log -1 --format=%h --abbrev=10 OUTPUT_VARIABLE BUILD_REVISION
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
  execute_process(COMMAND ${GIT_EXECUTABLE} -C "${SOURCE_DIR}" log -1 --format=%cs OUTPUT_VARIABLE BUILD_DATE
                  OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
configure_file("${TEMPLATE}" "${OUTPUT}" @ONLY)
