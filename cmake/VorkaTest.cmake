find_package(GTest REQUIRED)
include(GoogleTest)

# Most tests run for a moment: what they cost is their compilation.
function(vorka_test_options name level)
  set_target_properties(${name} PROPERTIES VORKA_IS_TEST ON)
  if(NOT CMAKE_BUILD_TYPE STREQUAL "Debug")
    target_compile_options(${name} PRIVATE ${level})
  endif()
endfunction()

# What every test program reads first, compiled once. A compiler cache does better without.
if(CMAKE_CXX_COMPILER_LAUNCHER)
  set(CMAKE_DISABLE_PRECOMPILE_HEADERS ON)
endif()
add_library(vorka_test_headers OBJECT "${CMAKE_CURRENT_LIST_DIR}/test_headers.cpp")
target_precompile_headers(vorka_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h>)
target_compile_definitions(vorka_test_headers PRIVATE VORKA_TEST_DIRECTORY="${PROJECT_SOURCE_DIR}/tests")
target_link_libraries(vorka_test_headers PRIVATE vorka_compile_options GTest::gmock GTest::gtest)
vorka_test_options(vorka_test_headers -O0)

# What each test program is started by: nothing, or valgrind, which ends it with status 99 if it has found something.
set(VORKA_TEST_STARTER "")
if(VORKA_VALGRIND)
  find_program(VALGRIND valgrind REQUIRED)
  set(VORKA_TEST_STARTER ${VALGRIND} --quiet --error-exitcode=99 --leak-check=full --errors-for-leak-kinds=definite
      "--suppressions=${PROJECT_SOURCE_DIR}/tests/support/valgrind.supp")
endif()

# vorka_test(<name> SOURCES <file>.. LINK <target>.. [LABELS <label>..] [PROPERTIES <name> <value>..] [OPTIMISED])
#
# Adds a GoogleTest program and registers each of its tests with CTest under the given labels (default: unit) and with
# the given properties; with the sanitizers and valgrind, the program as a whole. A program that calculates for seconds
# by its own code is OPTIMISED.
function(vorka_test name)
  cmake_parse_arguments(PARSE_ARGV 1 test "OPTIMISED" "" "SOURCES;LINK;LABELS;PROPERTIES")
  if(NOT test_LABELS)
    set(test_LABELS unit)
  endif()
  add_executable(${name} ${test_SOURCES})
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_compile_definitions(${name} PRIVATE VORKA_TEST_DIRECTORY="${PROJECT_SOURCE_DIR}/tests")
  target_link_libraries(${name} PRIVATE ${test_LINK} GTest::gmock GTest::gtest GTest::gtest_main)
  if(test_OPTIMISED)
    vorka_test_options(${name} -O1)
  else()
    vorka_test_options(${name} -O0)
    target_precompile_headers(${name} REUSE_FROM vorka_test_headers)
  endif()
  if(VORKA_SANITIZE OR VORKA_SANITIZE_THREAD OR VORKA_VALGRIND)
    # A start costs more than most tests: each program is run once, with all of its tests.
    add_test(NAME ${name} COMMAND ${VORKA_TEST_STARTER} $<TARGET_FILE:${name}>)
    set_tests_properties(${name} PROPERTIES LABELS "${test_LABELS}" TIMEOUT 7200 ${test_PROPERTIES})
    return()
  endif()
  gtest_discover_tests(${name} TEST_PREFIX "${name}." TEST_LIST ${name}_tests DISCOVERY_TIMEOUT 120)

  # gtest_discover_tests takes one label only; several, and properties, are set by a file that CTest reads after the
  # discovered tests.
  list(TRANSFORM test_PROPERTIES REPLACE ".+" "\"\\0\"" OUTPUT_VARIABLE properties)
  list(JOIN properties " " properties)
  set(labels_file "${CMAKE_CURRENT_BINARY_DIR}/${name}_labels.cmake")
  file(WRITE "${labels_file}" "if(${name}_tests)
  set_tests_properties(\${${name}_tests} PROPERTIES LABELS \"${test_LABELS}\" ${properties})
endif()
")
  set_property(DIRECTORY APPEND PROPERTY TEST_INCLUDE_FILES "${labels_file}")
endfunction()
