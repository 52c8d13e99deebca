set(SOURCES revoice_song_test.cpp revoicer_table_test.cpp suggest_voices_test.cpp)
