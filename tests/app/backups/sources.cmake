set(SOURCES auto_backup_test.cpp backup_folder_test.cpp)
