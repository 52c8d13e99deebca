set(SOURCES instrument_asker_test.cpp load_sequence_test.cpp prepare_song_test.cpp refusal_test.cpp revoice_folder_test.cpp save_song_test.cpp song_description_test.cpp)
set(LIBRARIES GTest::gtest_main tracksmith_midi_backends_loop)
