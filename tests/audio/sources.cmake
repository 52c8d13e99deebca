set(SOURCES audio_fixture.cpp audio_fixture.h channel_map_test.cpp live_synth_test.cpp
    render_song_test.cpp synth_adapter_test.cpp)
# FluidSynth's own threads are not built for the thread sanitizer, which knows nothing of them.
set(ENVIRONMENT TSAN_OPTIONS=ignore_noninstrumented_modules=1 SDL_AUDIODRIVER=dummy)
