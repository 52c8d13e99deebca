set(SOURCES
  backend.cpp backend.h call_thread.cpp call_thread.h client.cpp client.h connected_port.cpp connected_port.h message_ring.cpp
  message_ring.h midi_in.cpp midi_in.h midi_out.cpp midi_out.h port_directory.cpp port_directory.h)
