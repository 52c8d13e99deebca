set(SOURCES cli_fixture.h convert_test.cpp info_test.cpp render_test.cpp usage_test.cpp)
set(LIBRARIES GTest::gtest_main nlohmann_json::nlohmann_json)
# FluidSynth's own threads are not built for the thread sanitizer, which knows nothing of them.
set(ENVIRONMENT TSAN_OPTIONS=ignore_noninstrumented_modules=1)
