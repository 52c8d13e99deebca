set(SOURCES audio_error.cpp audio_error.h channel_map.cpp channel_map.h mode_message.cpp
    mode_message.h render_song.cpp render_song.h soft_synth.cpp soft_synth.h song_events.cpp
    song_events.h soundfont.cpp soundfont.h synth_adapter.cpp synth_adapter.h texts.h
    wav_writer.cpp wav_writer.h)
