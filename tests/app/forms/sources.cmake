set(SOURCES
  ask_test.cpp
  backups_test.cpp
  file_commands_test.cpp
  form_fixture.h
  health_test.cpp
  instrument_test.cpp
  language_test.cpp
  main.cpp
  lyrics_test.cpp
  menu_test.cpp
  mixer_test.cpp
  overview_test.cpp
  picker_test.cpp
  playing_test.cpp
  program_test.cpp
  recent_files_test.cpp
  revoicer_form_test.cpp
  song_display_test.cpp)
set(PROGRAM tracksmith)
set(LIBRARIES GTest::gtest Qt6::Test tracksmith_midi_backends_loop)
set(ENVIRONMENT QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy)
