set(SOURCES display_text_test.cpp file_io_test.cpp parallel_test.cpp)
if(NOT WIN32)
  list(APPEND SOURCES interrupt_test.cpp) # signals
endif()
