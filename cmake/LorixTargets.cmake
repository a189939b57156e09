# SPDX-License-Identifier: BSD-3-Clause
# What every target of the project shares, and the two ways of adding to it.

if(NOT CMAKE_CXX_COMPILER_LAUNCHER)
  find_program(LORIX_CCACHE ccache)
  if(LORIX_CCACHE)
    set(CMAKE_CXX_COMPILER_LAUNCHER ${LORIX_CCACHE})
  endif()
endif()

add_library(lorix_options INTERFACE)
target_compile_options(lorix_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror
  # Clang counts changes of sign among the conversions, GCC does not.
  $<$<CXX_COMPILER_ID:Clang>:-Wno-sign-conversion>)
target_compile_definitions(lorix_options INTERFACE
  QT_NO_FOREACH)

# lorix_classes(name ...) adds name.h and name.cpp of the current folder to the
# library; HEADERS takes those that have no source, PRIVATE those that are
# compiled but not installed.
function(lorix_classes)
  cmake_parse_arguments(ARG "" "" "HEADERS;PRIVATE" ${ARGN})
  foreach(name IN LISTS ARG_UNPARSED_ARGUMENTS)
    target_sources(lorix PRIVATE ${name}.cpp)
    list(APPEND ARG_HEADERS ${name}.h)
  endforeach()
  foreach(name IN LISTS ARG_PRIVATE)
    target_sources(lorix PRIVATE ${name})
  endforeach()
  foreach(header IN LISTS ARG_HEADERS)
    target_sources(lorix PUBLIC FILE_SET HEADERS
      BASE_DIRS ${PROJECT_SOURCE_DIR}
      FILES ${CMAKE_CURRENT_SOURCE_DIR}/${header})
  endforeach()
endfunction()

# lorix_test(name [LIBRARIES ...] [SOURCES ...]) registers name.cpp of the
# current folder as one Qt Test program. It runs against the shared library.
function(lorix_test name)
  cmake_parse_arguments(ARG "" "" "LIBRARIES;SOURCES" ${ARGN})
  add_executable(${name} ${name}.cpp ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE
    lorix::lorix lorix_options lorix_testsupport Qt6::Test ${ARG_LIBRARIES})
  target_include_directories(${name} PRIVATE ${PROJECT_SOURCE_DIR}/tests)
  add_test(NAME ${name} COMMAND ${name})
  set_tests_properties(${name} PROPERTIES
    TIMEOUT 600
    ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8;TZ=UTC;QTEST_FUNCTION_TIMEOUT=580000;LORIX_TOOLS=${PROJECT_SOURCE_DIR}/tools;LORIX_PROGRAM=${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/lorix")
endfunction()
