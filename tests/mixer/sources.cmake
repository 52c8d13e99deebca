set(SOURCES mixer_fixture.h lamps_test.cpp random_test.cpp sliders_test.cpp transposing_test.cpp)
