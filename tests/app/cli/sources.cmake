set(SOURCES
  backups_test.cpp
  check_test.cpp
  cli_fixture.h
  convert_test.cpp
  device_fixture.h
  info_test.cpp
  instruments_test.cpp
  play_test.cpp
  play_wishes_test.cpp
  ports_test.cpp
  range_test.cpp
  refused_files_test.cpp
  render_test.cpp
  revoice_test.cpp
  set_test.cpp
  texts_test.cpp
  usage_test.cpp)
set(LIBRARIES GTest::gtest_main nlohmann_json::nlohmann_json tracksmith_midi_backends_loop)
# FluidSynth's own threads are not built for the thread sanitizer, which knows nothing of them.
set(ENVIRONMENT TSAN_OPTIONS=ignore_noninstrumented_modules=1)
