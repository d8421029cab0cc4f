# What is shipped is, byte for byte, the program that the tests ran: linked without symbols, with an id by which its debug
# information is found.
#
# That information is a second program, linked of the same objects in the same way, but with all that the first one lacks; it
# stands in the folder debug and is made where BROMVALE_DEBUG_INFO says so. Stripping the program afterwards would not do: the tool
# for that writes the time into it, and names of sections at which scanners stumble. Paths in the debug information begin with
# /bromvale, wherever the sources lie.
option(BROMVALE_DEBUG_INFO "Make the programs a second time with debug information" OFF)
if(BROMVALE_DEBUG_INFO)
  # Functions and lines. Where GCC also says in which register a variable lies it can say another thing when it compiles the same
  # source once more.
  add_compile_options($<$<NOT:$<COMPILE_LANGUAGE:RC>>:-g1> $<$<NOT:$<COMPILE_LANGUAGE:RC>>:-ffile-prefix-map=${CMAKE_SOURCE_DIR}=/bromvale>
    # Names that GCC makes up are the same each time.
    $<$<COMPILE_LANGUAGE:CXX>:-frandom-seed=bromvale>)
endif()

# Folders of an installation are the same whatever the umask.
set(CMAKE_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
  OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

# bromvale_twin(TARGET)  the second program.
function(bromvale_twin name)
  foreach(property SOURCES LINK_LIBRARIES LINK_OPTIONS WIN32_EXECUTABLE OUTPUT_NAME)
    get_target_property(${property} ${name} ${property})
  endforeach()
  add_executable(${name}-debug ${SOURCES})
  target_link_libraries(${name}-debug PRIVATE ${LINK_LIBRARIES})
  target_link_options(${name}-debug PRIVATE ${LINK_OPTIONS})
  set_target_properties(${name}-debug PROPERTIES RUNTIME_OUTPUT_DIRECTORY ${CMAKE_BINARY_DIR}/debug WIN32_EXECUTABLE ${WIN32_EXECUTABLE})
  if(OUTPUT_NAME)
    set_target_properties(${name}-debug PROPERTIES OUTPUT_NAME ${OUTPUT_NAME})
  else()
    set_target_properties(${name}-debug PROPERTIES OUTPUT_NAME ${name})
  endif()
  add_dependencies(${name} ${name}-debug)
  install(TARGETS ${name}-debug RUNTIME DESTINATION . COMPONENT symbols)
endfunction()

# bromvale_shipped(TARGET [COMPONENT DESTINATION])  a program that people get, after all else was said about it; with a
# component it is part of the installation.
function(bromvale_shipped name)
  target_link_options(${name} PRIVATE -Wl,--build-id)
  if(BROMVALE_DEBUG_INFO AND ARGC GREATER 1)
    bromvale_twin(${name})
  endif()
  if(WIN32 OR BROMVALE_DEBUG_INFO)
    target_link_options(${name} PRIVATE $<$<NOT:$<CONFIG:Debug>>:-s>)
  endif()
  if(ARGC GREATER 1)
    install(TARGETS ${name} RUNTIME DESTINATION ${ARGV2} COMPONENT ${ARGV1})
  endif()
endfunction()
