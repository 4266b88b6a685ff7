# Run by CPack between staging and packing: Debian ships manual pages compressed, without a time in them.
file(GLOB_RECURSE pages ${CPACK_TEMPORARY_INSTALL_DIRECTORY}/*.1)
if(pages)
  execute_process(COMMAND gzip --best --no-name --force ${pages} COMMAND_ERROR_IS_FATAL ANY)
endif()
