set(SOURCES
  ask_test.cpp
  backups_test.cpp
  changes_test.cpp
  end_test.cpp
  file_commands_test.cpp
  form_fixture.h
  guide_test.cpp
  health_test.cpp
  instrument_test.cpp
  language_test.cpp
  main.cpp
  loading_test.cpp
  lyrics_test.cpp
  menu_test.cpp
  mixer_test.cpp
  overview_test.cpp
  picker_test.cpp
  picture_test.cpp
  playing_test.cpp
  range_forms_test.cpp
  recent_files_test.cpp
  revoicer_form_test.cpp
  screen_fit_test.cpp
  slow_medium.h
  song_display_test.cpp
  start_page_test.cpp
  synth_settings_test.cpp)
if(WIN32)
  # Wine's loop-back driver lies beside the test program already.
  list(APPEND SOURCES windows_program_test.cpp windows_window_test.cpp)
else()
  list(APPEND SOURCES program_test.cpp)
endif()
set(PROGRAM tracksmith)
set(LIBRARIES GTest::gtest Qt6::Test tracksmith_midi_backends_loop)
if(WIN32)
  list(APPEND LIBRARIES wineloop_beside)
endif()
set(ENVIRONMENT QT_QPA_PLATFORM=offscreen SDL_AUDIODRIVER=dummy)
