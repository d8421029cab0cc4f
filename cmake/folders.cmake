# A target a folder, so that one folder builds alone. Object libraries, since handlers are declared in ui/ and defined in
# the folders above it: no order of static libraries fits that.
#
# The sources are those that lie in the folder. A list beside it would say the same a second time, and a file that is
# missing in it would be neither built nor tested; the glob is looked at anew with each build (CONFIGURE_DEPENDS).

# bromvale_sources(VARIABLE FOLDER...)  the sources in folders. What ends in _win32 or _offline is for that platform alone.
function(bromvale_sources variable)
  list(TRANSFORM ARGN REPLACE "(.+)" "${CMAKE_SOURCE_DIR}/\\1/*.cpp" OUTPUT_VARIABLE patterns)
  file(GLOB sources CONFIGURE_DEPENDS ${patterns})
  if(WIN32)
    list(FILTER sources EXCLUDE REGEX "_offline\\.cpp$")
  else()
    list(FILTER sources EXCLUDE REGEX "_win32\\.cpp$")
  endif()
  set(${variable} ${sources} PARENT_SCOPE)
endfunction()

# bromvale_folder(PATH)  makes the target of a folder and adds it to bromvale_folders.
#
# Standard headers that nearly every file includes are parsed once, and Windows' own above the control model, which
# does without them.
function(bromvale_folder path)
  string(REPLACE "/" "_" name "${path}")
  string(REPLACE "_." "" name "${name}")
  bromvale_sources(sources ${path})
  add_library(${name} OBJECT ${sources})
  target_link_libraries(${name} PUBLIC bromvale_options)
  if(name STREQUAL "base" OR name STREQUAL "platform_win32_system")
    target_precompile_headers(${name} PRIVATE <algorithm> <functional> <memory> <string> <string_view> <vector>
      $<$<STREQUAL:${name},platform_win32_system>:${CMAKE_SOURCE_DIR}/platform/win32/system/windows.h>)
  elseif(TARGET platform_win32_system)
    target_precompile_headers(${name} REUSE_FROM platform_win32_system)
  else()
    target_precompile_headers(${name} REUSE_FROM base)
  endif()
  set(bromvale_folders ${bromvale_folders} ${name} PARENT_SCOPE)
endfunction()
