set(SOURCES file_association_test.cpp settings_store_test.cpp)
