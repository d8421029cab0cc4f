# BromvaleStart.exe, the starter of the portable program: one for both widths, so it is made in the 32-bit tree alone. What it
# does stands in starter/ and is tested on both platforms; what it asks of Windows stands in starter/win32/.
include(cmake/embed.cmake)
bromvale_embed(components resources/components.reg)
bromvale_sources(sources starter)
add_library(starter OBJECT ${sources} ${components})
target_link_libraries(starter PUBLIC bromvale_options)

if(WIN32)
  configure_file(resources/starter.rc.in generated/starter.rc @ONLY)
  set_property(SOURCE ${CMAKE_BINARY_DIR}/generated/starter.rc APPEND PROPERTY OBJECT_DEPENDS
    "${CMAKE_SOURCE_DIR}/resources/starter.manifest;${CMAKE_SOURCE_DIR}/resources/resource_ids.h")
  bromvale_sources(sources starter/win32)
  add_executable(bromvale-start WIN32 ${sources} base/registry_file_text.cpp platform/win32/system/runtime.cpp
    platform/win32/system/libraries.cpp
    ${CMAKE_BINARY_DIR}/generated/starter.rc)
  set_target_properties(bromvale-start PROPERTIES OUTPUT_NAME BromvaleStart)
  target_link_libraries(bromvale-start PRIVATE starter)
  target_link_options(bromvale-start PRIVATE -Wl,--tsaware)
  if(CMAKE_SIZEOF_VOID_P EQUAL 4 AND NOT BUILD_TESTING)
    bromvale_shipped(bromvale-start starter .)
  else()
    set_target_properties(bromvale-start PROPERTIES EXCLUDE_FROM_ALL ON)
  endif()
endif()
