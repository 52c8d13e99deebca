set(SOURCES display_text_test.cpp file_io_test.cpp parallel_test.cpp)
