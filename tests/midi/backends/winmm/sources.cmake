set(SOURCES devices_test.cpp input_test.cpp loop_fixture.cpp loop_fixture.h output_test.cpp
    ports_test.cpp)

# The driver that Wine loads from the folder of the test program.
set(LOOP client.cpp faults.cpp loop_input.cpp loop_output.cpp schedule.cpp wineloop.cpp)
list(TRANSFORM LOOP PREPEND ${CMAKE_SOURCE_DIR}/tests/${folder}/wineloop/)
add_library(wineloop MODULE ${LOOP})
set_target_properties(wineloop PROPERTIES PREFIX "" SUFFIX .drv)
target_include_directories(wineloop PRIVATE ${CMAKE_SOURCE_DIR}/tests)
target_link_libraries(wineloop PRIVATE tracksmith_options winmm)
add_library(wineloop_beside INTERFACE)
add_dependencies(wineloop_beside wineloop)
list(APPEND LIBRARIES wineloop_beside)
