# GoogleTest as this system has it; else its sources, from FETCHCONTENT_SOURCE_DIR_GOOGLETEST where that is set (Debian's
# package googletest puts them into /usr/src/googletest; the presets for Windows name it), else from its own home.
include(FetchContent)
include(GoogleTest)
set(BUILD_GMOCK OFF)
set(INSTALL_GTEST OFF)
FetchContent_Declare(googletest
  GIT_REPOSITORY https://github.com/google/googletest.git GIT_TAG release-1.12.1
  FIND_PACKAGE_ARGS NAMES GTest)
FetchContent_MakeAvailable(googletest)
if(TARGET gtest)
  # Its warnings under MinGW are its own affair.
  target_compile_options(gtest PRIVATE -w)
endif()
