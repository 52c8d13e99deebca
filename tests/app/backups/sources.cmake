set(SOURCES auto_backup_test.cpp backup_folder_test.cpp crash_records_test.cpp)
