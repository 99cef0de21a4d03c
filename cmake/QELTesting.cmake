# One line per test: the functions that the CMakeLists.txt of tests, bench and fuzz call.

find_program(QEL_BASH bash)
include(GoogleTest)
set(QEL_TEST_ENVIRONMENT
    "ASAN_OPTIONS=detect_stack_use_after_return=1:strict_string_checks=1"
    "UBSAN_OPTIONS=print_stacktrace=1")

# qel_add_test(<name> <source>...): a GoogleTest program; each of its cases is a test of ctest, or
# all of it one test where it was built for another system. Its main is GoogleTest's own, or that of the library that QEL_TEST_MAIN names.
set(QEL_TEST_MAIN GTest::gtest_main)
function(qel_add_test name)
  add_executable(${name} ${ARGN})
  target_link_libraries(${name} PRIVATE QEL::qel ${QEL_TEST_MAIN})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE QEL_TEST_DIR="${PROJECT_SOURCE_DIR}/tests")
  if(NOT MSVC AND NOT QEL_SANITIZE)
    # Nearly half of the time that their sources take is for optimisation, which tests nothing; under
    # sanitizers they would run for longer than that.
    target_compile_options(${name} PRIVATE -O0)
  endif()
  if(CMAKE_CROSSCOMPILING)
    # Starting a program costs more than what it tests.
    add_test(NAME ${name} COMMAND ${name} --gtest_brief=1)
    set_tests_properties(${name} PROPERTIES TIMEOUT 300)
    return()
  endif()
  gtest_discover_tests(
    ${name}
    DISCOVERY_MODE PRE_TEST
    DISCOVERY_TIMEOUT 60
    PROPERTIES TIMEOUT 300 ENVIRONMENT "${QEL_TEST_ENVIRONMENT}")
endfunction()

# qel_add_shell_test(<name> <script> <argument>...): a script run by bash without input; it passes
# when it exits with 0. Arguments may be generator expressions such as $<TARGET_FILE:...>.
function(qel_add_shell_test name script)
  if(NOT QEL_BASH)
    message(STATUS "No bash: test ${name} is left out")
    return()
  endif()
  cmake_path(ABSOLUTE_PATH script BASE_DIRECTORY "${CMAKE_CURRENT_SOURCE_DIR}")
  add_test(NAME ${name} COMMAND "${QEL_BASH}" "${script}" ${ARGN})
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${QEL_TEST_ENVIRONMENT}")
endfunction()
