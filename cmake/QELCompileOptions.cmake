# Language level, warnings and sanitizers of everything below this directory. They are directory
# properties, not usage requirements, so nothing of this reaches a project that links to QEL.

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)

if(MSVC)
  add_compile_options(/W4 /permissive- /utf-8 $<$<BOOL:${QEL_WERROR}>:/WX>)
else()
  add_compile_options(-Wall -Wextra -Wpedantic -Wshadow -Wconversion
                      $<$<BOOL:${QEL_WERROR}>:-Werror>)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 13)
    # GCC 12 takes "literal" + string for overlapping copies where it inlines a lot.
    add_compile_options(-Wno-restrict)
  endif()
endif()

if(CMAKE_UNITY_BUILD)
  # A name of one source may hide that of another, and a source is a header to GCC.
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-Wno-shadow -Wshadow=local
                        $<$<COMPILE_LANGUAGE:CXX>:-Wno-subobject-linkage>)
  else()
    add_compile_options(-Wno-shadow)
  endif()
endif()

if(QEL_SANITIZE)
  set(instrumentation -fsanitize=${QEL_SANITIZE} -fno-sanitize-recover=all -fno-omit-frame-pointer)
  add_compile_options(${instrumentation})
  add_link_options(${instrumentation})
endif()

if(QEL_FUZZ)
  if(NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
    message(FATAL_ERROR "QEL_FUZZ needs clang; try: cmake --preset fuzz")
  endif()
  add_link_options(-fsanitize=fuzzer-no-link)
endif()
