set(SOURCES ../support/failing_allocation.cpp foresight_test.cpp random_music.h random_session_test.cpp range_edits_test.cpp range_tools_test.cpp undo_test.cpp)
set(LIBRARIES GTest::gtest_main tracksmith_app)
