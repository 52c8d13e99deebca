set(SOURCES health_test.cpp repair_test.cpp)
