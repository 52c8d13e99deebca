set(SOURCES compare_songs_test.cpp)
