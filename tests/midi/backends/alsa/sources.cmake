set(SOURCES backend_test.cpp packet_joiner_test.cpp port_names_test.cpp sequencer_test.cpp)
set(LIBRARIES GTest::gtest_main asound)
