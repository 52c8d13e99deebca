set(SOURCES lyrics_test.cpp)
