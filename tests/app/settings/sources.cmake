set(SOURCES settings_store_test.cpp)
