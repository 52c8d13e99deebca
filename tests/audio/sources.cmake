set(SOURCES audio_fixture.cpp audio_fixture.h channel_map_test.cpp render_song_test.cpp
    synth_adapter_test.cpp)
