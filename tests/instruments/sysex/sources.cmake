set(SOURCES
  check_sysexs_test.cpp
  describe_test.cpp
  keep_sound_test.cpp
  insert_test.cpp
  sysex_fixture.h)
