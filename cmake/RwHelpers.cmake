# Project helpers: core libraries, tests, and the rule that keeps the
# windowing toolkit out of the core.

include(GoogleTest)

set(RW_CORE_TARGETS "" CACHE INTERNAL "")
set(RW_WARNINGS -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wno-sign-conversion)

# rw_add_core_library(<name> SOURCES ... [DEPS ...])
function(rw_add_core_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "rw_add_core_library(${name}): unknown arguments ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  add_library(${name} STATIC ${ARG_SOURCES})
  target_include_directories(${name} PUBLIC "${CMAKE_SOURCE_DIR}")
  target_compile_options(${name} PRIVATE ${RW_WARNINGS})
  target_link_libraries(${name} PUBLIC ${ARG_DEPS})
  set(RW_CORE_TARGETS "${RW_CORE_TARGETS};${name}" CACHE INTERNAL "")
endfunction()

# rw_add_gtest(<name> SOURCES ... [DEPS ...] [LABELS ...])
function(rw_add_gtest name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS;LABELS" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "rw_add_gtest(${name}): unknown arguments ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  target_compile_options(${name} PRIVATE ${RW_WARNINGS})
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} rw_testsupport GTest::gtest GTest::gmock GTest::gtest_main)
  # Each GoogleTest test is a ctest test of its own, found when ctest runs;
  # the pinned environment comes through `cmake -E env`, which both the
  # discovery and every test run start the executable with.
  set_target_properties(${name} PROPERTIES CROSSCOMPILING_EMULATOR
    "${CMAKE_COMMAND};-E;env;${RW_TEST_ENVIRONMENT}")
  gtest_discover_tests(${name} DISCOVERY_MODE PRE_TEST DISCOVERY_TIMEOUT 60
    PROPERTIES LABELS "core${ARG_LABELS}")
endfunction()

# The tests run in a fixed environment: no display, UTC, C locale, and every
# per-user folder inside the build tree.
set(RW_TEST_ENVIRONMENT
  "QT_QPA_PLATFORM=offscreen;TZ=UTC;LANG=C.UTF-8;LC_ALL=C.UTF-8;XDG_DATA_HOME=${CMAKE_BINARY_DIR}/test-home/data;XDG_CONFIG_HOME=${CMAKE_BINARY_DIR}/test-home/config;HOME=${CMAKE_BINARY_DIR}/test-home;RW_SOURCE_DIR=${CMAKE_SOURCE_DIR};RW_INSTALL_DIR=${RW_INSTALL_DIR}")
function(rw_pin_test_environment testname)
  set_tests_properties(${testname} PROPERTIES ENVIRONMENT "${RW_TEST_ENVIRONMENT}")
endfunction()

# Fails the configure step when a core library links Qt or one of its files
# includes a Qt header.
function(rw_check_core_is_toolkit_free)
  foreach(t IN LISTS RW_CORE_TARGETS)
    if(NOT t)
      continue()
    endif()
    get_target_property(libs ${t} LINK_LIBRARIES)
    if(libs)
      foreach(l IN LISTS libs)
        if(l MATCHES "^Qt")
          message(FATAL_ERROR "Core library ${t} links ${l}; only shell-free UI code may use Qt")
        endif()
      endforeach()
    endif()
    get_target_property(srcs ${t} SOURCES)
    get_target_property(dir ${t} SOURCE_DIR)
    foreach(s IN LISTS srcs)
      if(IS_ABSOLUTE "${s}")
        set(f "${s}")
      else()
        set(f "${dir}/${s}")
      endif()
      if(EXISTS "${f}")
        file(STRINGS "${f}" hits REGEX "^[ \t]*#[ \t]*include[ \t]*<Q")
        if(hits)
          message(FATAL_ERROR "Core file ${f} includes a Qt header: ${hits}")
        endif()
        string(REGEX REPLACE "\\.cpp$" ".h" hdr "${f}")
        if(EXISTS "${hdr}")
          file(STRINGS "${hdr}" hits REGEX "^[ \t]*#[ \t]*include[ \t]*<Q")
          if(hits)
            message(FATAL_ERROR "Core header ${hdr} includes a Qt header: ${hits}")
          endif()
        endif()
      endif()
    endforeach()
  endforeach()
endfunction()

# rw_add_qttest(<name> SOURCES ... [DEPS ...]): a QtTest executable run offscreen.
function(rw_add_qttest name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPS" ${ARGN})
  if(ARG_UNPARSED_ARGUMENTS)
    message(FATAL_ERROR "rw_add_qttest(${name}): unknown arguments ${ARG_UNPARSED_ARGUMENTS}")
  endif()
  add_executable(${name} ${ARG_SOURCES})
  set_target_properties(${name} PROPERTIES AUTOMOC ON RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/tests")
  target_compile_options(${name} PRIVATE ${RW_WARNINGS})
  target_compile_definitions(${name} PRIVATE QT_NO_KEYWORDS)
  target_link_libraries(${name} PRIVATE ${ARG_DEPS} rw_testsupport Qt6::Test Qt6::Widgets)
  add_test(NAME ${name} COMMAND ${name})
  rw_pin_test_environment(${name})
  set_tests_properties(${name} PROPERTIES LABELS "ui")
endfunction()
