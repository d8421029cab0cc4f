# Bromvale.chm beside the program. Its compiler is a tool of the build machine that may be missing: the program is
# built all the same, and "Hilfe" then shows what the system's viewer shows for a missing file.
find_program(BROMVALE_CHMCMD chmcmd DOC "Compiler of help files (Debian: fp-utils)")
find_package(Python3 COMPONENTS Interpreter QUIET)

function(bromvale_help program)
  if(NOT BROMVALE_CHMCMD OR NOT Python3_Interpreter_FOUND)
    message(WARNING "Bromvale.chm is not built: chmcmd (Debian: fp-utils) or Python 3 is missing. "
                    "scripts/install-tools.sh windows gets them.")
    return()
  endif()
  file(GLOB sources CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/help/* ${CMAKE_SOURCE_DIR}/resources/help/images/*)
  set(output ${CMAKE_BINARY_DIR}/Bromvale.chm)
  add_custom_command(OUTPUT ${output}
    COMMAND ${Python3_EXECUTABLE} ${CMAKE_SOURCE_DIR}/tools/help/build-help --chmcmd ${BROMVALE_CHMCMD} ${output}
    DEPENDS ${sources} ${CMAKE_SOURCE_DIR}/tools/help/build-help
    COMMENT "Compiling the help" VERBATIM)
  add_custom_target(bromvale-help DEPENDS ${output})
  add_dependencies(${program} bromvale-help)
  install(FILES ${output} DESTINATION . COMPONENT program)
  install(FILES ${output} DESTINATION . COMPONENT program-here EXCLUDE_FROM_ALL)
endfunction()
