# Run by CPack before it packs: everything bears the time of the release, and folders are as usual whatever the umask, so that
# the package is the same each time.
execute_process(COMMAND_ERROR_IS_FATAL ANY
  COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -type d -exec chmod 755 {} +)
if(DEFINED ENV{SOURCE_DATE_EPOCH})
  execute_process(COMMAND_ERROR_IS_FATAL ANY
    COMMAND find ${CPACK_TEMPORARY_DIRECTORY} -exec touch -h -d @$ENV{SOURCE_DATE_EPOCH} {} +)
endif()
