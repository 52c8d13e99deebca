set(SOURCES display_text_test.cpp file_io_test.cpp parallel_test.cpp)
if(WIN32)
  list(APPEND SOURCES windows_test.cpp)
else()
  list(APPEND SOURCES interrupt_test.cpp single_start_test.cpp) # signals, sockets
endif()
