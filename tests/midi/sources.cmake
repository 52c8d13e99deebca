set(SOURCES
  driver_set_test.cpp
  fake_input_driver.h
  fake_output_driver.h
  input_queue_test.cpp
  midi_input_test.cpp
  midi_output_long_test.cpp
  midi_output_test.cpp
  message_poster_test.cpp
  port_name_test.cpp
  portable_input_driver_test.cpp
  portable_output_driver_test.cpp)
list(APPEND LIBRARIES tracksmith_midi_backends_loop)
