set(SOURCES driver.h midi_in.cpp midi_out.cpp system_types.cpp system_types.h)
