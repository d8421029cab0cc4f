# Bromvale.exe with its resources and its help.
configure_file(resources/bromvale.rc.in generated/bromvale.rc @ONLY)
configure_file(resources/bromvale.manifest generated/bromvale.manifest @ONLY)
file(GLOB bromvale_icons CONFIGURE_DEPENDS ${CMAKE_SOURCE_DIR}/resources/icons/*.ico)
set_property(SOURCE ${CMAKE_BINARY_DIR}/generated/bromvale.rc APPEND PROPERTY OBJECT_DEPENDS
  "${bromvale_icons};${CMAKE_BINARY_DIR}/generated/bromvale.manifest;${CMAKE_SOURCE_DIR}/resources/resource_ids.h")

# bromvale_program(TARGET WEB-HOST-TARGET [COMPONENT DESTINATION])
function(bromvale_program name host)
  add_executable(${name} WIN32 bromvale/winmain.cpp ${CMAKE_BINARY_DIR}/generated/bromvale.rc)
  set_target_properties(${name} PROPERTIES OUTPUT_NAME Bromvale)
  target_link_libraries(${name} PRIVATE ${bromvale_folders} ${host})
  # A terminal server need not watch over its calls: the program writes nothing of its own into the Windows folder
  # and keeps its settings by user.
  target_link_options(${name} PRIVATE -Wl,--tsaware)
  bromvale_shipped(${name} ${ARGN})
endfunction()

bromvale_program(bromvale web_host program .)
if(BUILD_TESTING)
  set_target_properties(bromvale PROPERTIES EXCLUDE_FROM_ALL ON)  # no test of that tree runs it
endif()
include(cmake/help.cmake)
bromvale_help(bromvale)

# The same program, whose web services are those of run.sh and of the desktop tests: a server on this machine.
bromvale_web_host(web_host_here "127.0.0.1:28380")
bromvale_program(bromvale-here web_host_here)
set_target_properties(bromvale-here PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/here EXCLUDE_FROM_ALL ON)
install(TARGETS bromvale-here RUNTIME DESTINATION . COMPONENT program-here EXCLUDE_FROM_ALL)
if(TARGET bromvale-help)
  add_dependencies(bromvale-here bromvale-help)
  add_custom_command(TARGET bromvale-here POST_BUILD VERBATIM
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${CMAKE_BINARY_DIR}/Bromvale.chm ${CMAKE_BINARY_DIR}/here/Bromvale.chm)
endif()
