# One folder, one library: tessary_library(NAME SOURCES ... LINKS ... PRIVATE_LINKS ...)
#
# LINKS are the rooms and libraries that the folder's headers mention, PRIVATE_LINKS those that only
# its sources do. Includes are written from src/, so a path names the room that it comes from.
add_library(tessary_options INTERFACE)
target_compile_features(tessary_options INTERFACE cxx_std_20)
target_include_directories(tessary_options INTERFACE "${PROJECT_SOURCE_DIR}/src")
target_compile_options(
  tessary_options
  INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wnon-virtual-dtor -Wold-style-cast
            -Woverloaded-virtual -Wimplicit-fallthrough
            # GCC 12 sees overlapping copies in "text" + std::string that are not there (PR 105651).
            $<$<CXX_COMPILER_ID:GNU>:-Wno-restrict>
            # Its own garbage collector would else take a sixth of its time.
            $<$<CXX_COMPILER_ID:GNU>:--param=ggc-min-heapsize=500000>)

function(tessary_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;LINKS;PRIVATE_LINKS" ${ARGN})
  if(ARG_SOURCES)
    add_library(${name} STATIC ${ARG_SOURCES})
    target_link_libraries(${name} PUBLIC tessary_options ${ARG_LINKS} PRIVATE ${ARG_PRIVATE_LINKS})
    tessary_strict(${name})
  else()
    add_library(${name} INTERFACE)
    target_link_libraries(${name} INTERFACE tessary_options ${ARG_LINKS})
  endif()
endfunction()

# Makes warnings errors where the preset asks for it.
function(tessary_strict target)
  if(TESSARY_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
endfunction()

# What the leak sanitizer is told, an object for each program that is tested.
function(tessary_leaks)
  add_library(tessary_leaks OBJECT EXCLUDE_FROM_ALL "${PROJECT_SOURCE_DIR}/tests/support/leaks.cpp")
  target_link_libraries(tessary_leaks PRIVATE tessary_options)
  tessary_strict(tessary_leaks)
endfunction()

# The test framework's headers, compiled once for all test programs: they take longer than the tests.
function(tessary_test_headers)
  add_library(tessary_test_headers OBJECT "${PROJECT_SOURCE_DIR}/cmake/nothing.cpp")
  target_link_libraries(tessary_test_headers PRIVATE tessary_options GTest::gmock GTest::gtest)
  target_precompile_headers(tessary_test_headers PRIVATE <gmock/gmock.h> <gtest/gtest.h> <string>
                            <variant> <vector>)
  tessary_strict(tessary_test_headers)
endfunction()

# One test program a room: tessary_test(NAME [PROGRAMS] SOURCES ... LINKS ...)
#
# PROGRAMS are tests that run the built command, TESSARY_PROGRAM: they link next to nothing and are
# built by the preset release too, where the others are left out.
function(tessary_test name)
  cmake_parse_arguments(ARG "PROGRAMS" "" "SOURCES;LINKS" ${ARGN})
  if(NOT ARG_PROGRAMS AND NOT TESSARY_TESTS STREQUAL "all")
    return()
  endif()
  add_executable(${name} ${ARG_SOURCES} $<TARGET_OBJECTS:tessary_leaks>)
  target_link_libraries(${name} PRIVATE tessary_options ${ARG_LINKS} GTest::gmock GTest::gtest_main)
  target_include_directories(${name} PRIVATE "${PROJECT_SOURCE_DIR}/tests")
  target_precompile_headers(${name} REUSE_FROM tessary_test_headers)
  # Tests are free to name their helpers alike.
  set_target_properties(${name} PROPERTIES UNITY_BUILD OFF)
  tessary_strict(${name})
  if(ARG_PROGRAMS)
    target_compile_definitions(${name} PRIVATE "TESSARY_PROGRAM=\"$<TARGET_FILE:tessary-widgets>\"")
    add_dependencies(${name} tessary-widgets)
  endif()
  gtest_discover_tests(
    ${name}
    WORKING_DIRECTORY "${PROJECT_BINARY_DIR}"
    DISCOVERY_MODE PRE_TEST
    PROPERTIES TIMEOUT 120)
endfunction()
