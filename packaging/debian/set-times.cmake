# Run by CPack before it packs: everything bears the time of the release, so that the package is the same each time.
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND_ERROR_IS_FATAL ANY
    COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +)
endif()
