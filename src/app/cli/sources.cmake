set(SOURCES ask_at_port.cpp ask_at_port.h cli_app.cpp cli_app.h cli_context.h cli_message_host.cpp cli_message_host.h columns.cpp
    columns.h command_convert.cpp command_info.cpp command_instruments.cpp
    command_play.cpp command_ports.cpp command_set.cpp command_voices.cpp commands.h
    console.h error_words.cpp error_words.h info_json.cpp info_json.h info_text.cpp info_text.h input_files.cpp input_files.h
    instrument_choice.cpp instrument_choice.h
    memory_share.cpp memory_share.h open_devices.h output_names.cpp output_names.h play_session.cpp play_session.h play_wishes.cpp
    play_wishes.h port_choice.cpp port_choice.h port_list.cpp port_list.h
    reading_options.cpp reading_options.h song_input.cpp
    song_input.h terminal_line.cpp terminal_line.h
    texts.cpp texts.h
    user_settings.h)
if(TRACKSMITH_AUDIO)
  list(APPEND SOURCES command_render.cpp)
else()
  list(APPEND SOURCES command_render_none.cpp)
endif()
if(WIN32)
  list(APPEND SOURCES console_windows.cpp)
else()
  list(APPEND SOURCES console_posix.cpp)
endif()
