# Builds for Windows with MinGW-w64 from Debian; QEL_MINGW_ARCH names the processor. Tests and
# scripts run under Wine (scripts/wine, scripts/wine32).

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

# What is built is the same whenever and wherever it is built, and imports the system's libraries
# only.
cmake_path(GET CMAKE_CURRENT_LIST_DIR PARENT_PATH root)
cmake_path(GET root PARENT_PATH root)
set(flags "-ffile-prefix-map=${root}=.")
set(linking "-static -Wl,--no-insert-timestamp")

# Every Windows that is still cared for runs on processors with SSE2, which numbers are computed by
# on 64 bits, too. Hosts do not align the stack for it.
if(QEL_MINGW_ARCH STREQUAL i686)
  string(APPEND flags " -msse2 -mfpmath=sse -mstackrealign")
endif()

set(CMAKE_C_FLAGS_INIT "${flags}")
set(CMAKE_CXX_FLAGS_INIT "${flags}")
set(CMAKE_EXE_LINKER_FLAGS_INIT "${linking}")
set(CMAKE_SHARED_LINKER_FLAGS_INIT "${linking}")

if(QEL_MINGW_ARCH STREQUAL i686)
  set(CMAKE_CROSSCOMPILING_EMULATOR "${root}/scripts/wine32")
else()
  set(CMAKE_CROSSCOMPILING_EMULATOR "${root}/scripts/wine")
endif()
