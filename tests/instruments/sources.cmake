set(SOURCES catalogue_test.cpp settings_test.cpp)
