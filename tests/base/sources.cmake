set(SOURCES display_text_test.cpp file_io_test.cpp)
