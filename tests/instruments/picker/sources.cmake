set(SOURCES drum_notes_test.cpp voice_memory_test.cpp voice_picker_test.cpp write_voice_test.cpp)
