set(SOURCES load_sequence_test.cpp prepare_song_test.cpp refusal_test.cpp save_song_test.cpp song_description_test.cpp)
