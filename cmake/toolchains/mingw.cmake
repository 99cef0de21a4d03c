# Builds for Windows with MinGW-w64 from Debian; QEL_MINGW_ARCH names the processor. Tests and
# scripts run under Wine (scripts/wine).

set(QEL_MINGW_ARCH x86_64 CACHE STRING "x86_64 or i686")
list(APPEND CMAKE_TRY_COMPILE_PLATFORM_VARIABLES QEL_MINGW_ARCH)

set(CMAKE_SYSTEM_NAME Windows)
set(CMAKE_SYSTEM_PROCESSOR ${QEL_MINGW_ARCH})
set(triple ${QEL_MINGW_ARCH}-w64-mingw32)

set(CMAKE_C_COMPILER ${triple}-gcc-posix)
set(CMAKE_CXX_COMPILER ${triple}-g++-posix)
set(CMAKE_RC_COMPILER ${triple}-windres)
set(QEL_IDL_COMPILER ${triple}-widl)

set(CMAKE_FIND_ROOT_PATH /usr/${triple})
set(CMAKE_FIND_ROOT_PATH_MODE_PROGRAM NEVER)
set(CMAKE_FIND_ROOT_PATH_MODE_LIBRARY ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_INCLUDE ONLY)
set(CMAKE_FIND_ROOT_PATH_MODE_PACKAGE ONLY)

# Every Windows that is still cared for runs on processors with SSE2, which numbers are computed by
# on 64 bits, too. Hosts do not align the stack for it.
if(QEL_MINGW_ARCH STREQUAL i686)
  set(CMAKE_CXX_FLAGS_INIT "-msse2 -mfpmath=sse -mstackrealign")
endif()

# What is built imports the system's libraries only.
set(CMAKE_EXE_LINKER_FLAGS_INIT -static)
set(CMAKE_SHARED_LINKER_FLAGS_INIT -static)

cmake_path(SET root NORMALIZE "${CMAKE_CURRENT_LIST_DIR}/../..")
set(CMAKE_CROSSCOMPILING_EMULATOR "${root}/scripts/wine")
