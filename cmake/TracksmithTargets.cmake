# Warnings for code of our own; the interface target carries them to every unit.
add_library(tracksmith_options INTERFACE)
target_compile_features(tracksmith_options INTERFACE cxx_std_20)
target_compile_options(tracksmith_options INTERFACE
  -Wall -Wextra -Wpedantic -Wshadow -Wconversion -Wold-style-cast -Woverloaded-virtual -Werror
  # Rounding goes through lrint, which is one instruction only when errno is out of play.
  -fno-math-errno)
find_package(Threads REQUIRED)
target_link_libraries(tracksmith_options INTERFACE Threads::Threads)
if(WIN32)
  # Wide entry points and system functions, and no minimum and maximum macros.
  target_compile_definitions(tracksmith_options INTERFACE UNICODE _UNICODE NOMINMAX
                             WIN32_LEAN_AND_MEAN _WIN32_WINNT=0x0A00)
endif()
add_custom_target(tracksmith_rules)

# Reading headers of the standard library, of Qt and of GoogleTest is most of the compiler's work, so
# they are read once and shared. Sources still include what they use: a build without this shows it.
option(TRACKSMITH_PRECOMPILED "Precompile the headers of libraries" ON)
set(TRACKSMITH_STANDARD_HEADERS <algorithm> <array> <atomic> <chrono> <cstdint> <filesystem> <functional>
    <map> <memory> <mutex> <optional> <span> <string> <string_view> <thread> <vector>)

# Several sources of a unit at a time take the compiler a third of the work, but a changed one takes its
# neighbours along: for configurations that are built as a whole.
option(TRACKSMITH_UNITY "Compile the sources of units in batches" OFF)
if(TRACKSMITH_UNITY AND CMAKE_CXX_COMPILER_ID STREQUAL GNU)
  # Takes every source of a batch for a header.
  target_compile_options(tracksmith_options INTERFACE -Wno-subobject-linkage)
endif()

# tracksmith_precompile(target name header...): lets the target use the precompiled headers of that
# name, which the first target with the name makes.
function(tracksmith_precompile target name)
  if(NOT TRACKSMITH_PRECOMPILED)
    return()
  endif()
  get_property(maker GLOBAL PROPERTY TRACKSMITH_PRECOMPILED_${name})
  if(maker)
    target_precompile_headers(${target} REUSE_FROM ${maker})
  else()
    target_precompile_headers(${target} PRIVATE ${TRACKSMITH_STANDARD_HEADERS} ${ARGN})
    set_property(GLOBAL PROPERTY TRACKSMITH_PRECOMPILED_${name} ${target})
  endif()
endfunction()

# The target that builds the unit in src/<folder>.
function(tracksmith_target folder out)
  string(REPLACE "/" "_" name ${folder})
  set(${out} tracksmith_${name} PARENT_SCOPE)
endfunction()

# tracksmith_unit(folder [QT] [SYSTEM] [DEPENDS unit...] [LIBRARIES target...]): one static library
# per unit, its sources named in src/<folder>/sources.cmake; the same line feeds the linker and the
# layering test.
function(tracksmith_unit folder)
  cmake_parse_arguments(U "QT;SYSTEM" "" "DEPENDS;LIBRARIES" ${ARGN})
  set(SOURCES)
  include(${CMAKE_SOURCE_DIR}/src/${folder}/sources.cmake)
  list(TRANSFORM SOURCES PREPEND src/${folder}/)
  tracksmith_target(${folder} target)
  add_library(${target} STATIC ${SOURCES})
  set_target_properties(${target} PROPERTIES UNITY_BUILD ${TRACKSMITH_UNITY} UNITY_BUILD_BATCH_SIZE 8)
  target_include_directories(${target} PUBLIC ${CMAKE_SOURCE_DIR}/src)
  target_link_libraries(${target} PUBLIC tracksmith_options PRIVATE ${U_LIBRARIES})
  foreach(unit IN LISTS U_DEPENDS)
    tracksmith_target(${unit} dependency)
    target_link_libraries(${target} PUBLIC ${dependency})
  endforeach()
  set(marks)
  if(U_QT)
    set_target_properties(${target} PROPERTIES AUTOMOC ON)
    target_link_libraries(${target} PUBLIC Qt6::Widgets)
    tracksmith_precompile(${target} qt <QtWidgets>)
    list(APPEND marks QT)
  elseif(NOT U_SYSTEM)
    tracksmith_precompile(${target} core)
  endif()
  if(U_SYSTEM)
    list(APPEND marks SYSTEM)
  endif()
  string(REPLACE ";" "," depends "${U_DEPENDS}")
  string(REPLACE ";" "," marks "${marks}")
  set_property(TARGET tracksmith_rules APPEND PROPERTY RULES "${folder}=${depends}=${marks}")
endfunction()

# tracksmith_program(name main.cpp [GUI] [DEPENDS unit...]): a program of one main file in src/.
function(tracksmith_program name main)
  cmake_parse_arguments(P "GUI" "" "DEPENDS" ${ARGN})
  add_executable(${name} src/${main})
  if(P_GUI)
    set_target_properties(${name} PROPERTIES WIN32_EXECUTABLE ON)
  endif()
  target_compile_definitions(${name} PRIVATE TRACKSMITH_VERSION="${PROJECT_VERSION}")
  foreach(unit IN LISTS P_DEPENDS)
    tracksmith_target(${unit} dependency)
    target_link_libraries(${name} PRIVATE ${dependency})
  endforeach()
endfunction()

# tracksmith_test(folder): the tests of the unit src/<folder>, one executable, its sources named in
# tests/<folder>/sources.cmake. A program named there as PROGRAM is built first, and the tests know
# where it is.
function(tracksmith_test folder)
  set(SOURCES)
  set(PROGRAM)
  set(LIBRARIES GTest::gtest_main)
  set(ENVIRONMENT)
  include(${CMAKE_SOURCE_DIR}/tests/${folder}/sources.cmake)
  list(TRANSFORM SOURCES PREPEND ${CMAKE_SOURCE_DIR}/tests/${folder}/)
  string(REPLACE "/" "_" name ${folder})
  tracksmith_target(${folder} unit)
  add_executable(${name}_test ${SOURCES})
  target_include_directories(${name}_test PRIVATE ${CMAKE_SOURCE_DIR}/tests)
  target_compile_definitions(${name}_test PRIVATE
    TRACKSMITH_SOURCE_DIR="${CMAKE_SOURCE_DIR}")
  target_link_libraries(${name}_test PRIVATE ${unit} ${LIBRARIES})
  # The code under test keeps the flags of its configuration; to optimise what the tests themselves
  # do takes the compiler up to three times as long and gains nothing.
  target_compile_options(${name}_test PRIVATE -O0)
  if(PROGRAM)
    add_dependencies(${name}_test ${PROGRAM})
    target_compile_definitions(${name}_test PRIVATE TRACKSMITH_PROGRAM="$<TARGET_FILE:${PROGRAM}>")
  endif()
  if(Qt6::Test IN_LIST LIBRARIES)
    tracksmith_offscreen(${name}_test)
    tracksmith_precompile(${name}_test qt_test <gtest/gtest.h> <QtTest> <QtWidgets>)
  else()
    tracksmith_precompile(${name}_test test <gtest/gtest.h>)
  endif()
  add_test(NAME ${name} COMMAND ${name}_test)
  set_tests_properties(${name} PROPERTIES TIMEOUT 300 ENVIRONMENT "${ENVIRONMENT}")
endfunction()
