set(SOURCES hostile_import_test.cpp import_ins_test.cpp import_midnam_test.cpp)
