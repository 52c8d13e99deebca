set(SOURCES cli_fixture.h convert_test.cpp info_test.cpp render_test.cpp usage_test.cpp)
set(LIBRARIES GTest::gtest_main nlohmann_json::nlohmann_json)
