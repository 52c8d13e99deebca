set(SOURCES health_test.cpp)
