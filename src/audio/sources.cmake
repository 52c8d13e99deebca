set(SOURCES audio_error.cpp audio_error.h audio_output.cpp audio_output.h channel_map.cpp
    channel_map.h limiter.h live_synth.cpp live_synth.h message_ring.cpp message_ring.h
    render_song.cpp render_song.h soft_synth.cpp soft_synth.h soundfont.cpp soundfont.h
    synth_adapter.cpp synth_adapter.h
    synth_backend.cpp synth_backend.h texts.h wav_writer.cpp wav_writer.h)
