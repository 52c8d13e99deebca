set(SOURCES
  backend.cpp backend.h midi_in.cpp midi_in.h midi_out.cpp midi_out.h packet_joiner.cpp
  packet_joiner.h port_names.cpp port_names.h sequencer.cpp sequencer.h)
