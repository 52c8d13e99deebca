set(SOURCES identity_test.cpp)
