# Libraries from outside. A cross build finds the header-only ones in the folder that
# TRACKSMITH_HEADER_LIBRARIES names (CLI/, nlohmann/), since the host's include folder must not
# be searched as a whole.
if(TRACKSMITH_HEADER_LIBRARIES)
  foreach(name IN ITEMS CLI11::CLI11 nlohmann_json::nlohmann_json)
    add_library(${name} INTERFACE IMPORTED)
    target_include_directories(${name} SYSTEM INTERFACE ${TRACKSMITH_HEADER_LIBRARIES})
  endforeach()
else()
  find_package(CLI11 REQUIRED)
  find_package(nlohmann_json REQUIRED)
endif()

if(TRACKSMITH_AUDIO)
  find_package(PkgConfig REQUIRED)
  pkg_check_modules(fluidsynth REQUIRED IMPORTED_TARGET fluidsynth)
  pkg_check_modules(sndfile REQUIRED IMPORTED_TARGET sndfile)
endif()

if(TRACKSMITH_GUI)
  find_package(Qt6 6.4 REQUIRED COMPONENTS Widgets Test)
endif()

if(BUILD_TESTING)
  if(TRACKSMITH_GOOGLETEST_SOURCE)
    set(INSTALL_GTEST OFF)
    add_subdirectory(${TRACKSMITH_GOOGLETEST_SOURCE} googletest EXCLUDE_FROM_ALL)
    add_library(GTest::gtest ALIAS gtest)
    add_library(GTest::gtest_main ALIAS gtest_main)
  else()
    find_package(GTest REQUIRED)
  endif()
endif()

if(TRACKSMITH_BENCHMARKS)
  find_package(benchmark REQUIRED)
endif()
