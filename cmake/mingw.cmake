# Cross toolchain: Windows programs with MinGW-w64. BROMVALE_MINGW_ARCH is i686 or x86_64,
# BROMVALE_MINGW_FLAVOUR is win32 (the product: its thread model loads on Windows 98 and NT4) or
# posix (the test programs, whose library wants <mutex>).
set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES BROMVALE_MINGW_ARCH BROMVALE_MINGW_FLAVOUR)
set(_prefix ${BROMVALE_MINGW_ARCH}-w64-mingw32)
set(CMAKE_SYSTEM_PROCESSOR ${BROMVALE_MINGW_ARCH})
set(CMAKE_C_COMPILER ${_prefix}-gcc-${BROMVALE_MINGW_FLAVOUR})
set(CMAKE_CXX_COMPILER ${_prefix}-g++-${BROMVALE_MINGW_FLAVOUR})
set(CMAKE_RC_COMPILER ${_prefix}-windres)
set(CMAKE_FIND_ROOT_PATH /usr/${_prefix})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
