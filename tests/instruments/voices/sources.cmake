set(SOURCES ../../support/failing_allocation.cpp shipped_tables_test.cpp voice_list_test.cpp voice_lookup_test.cpp
            voice_table_test.cpp voice_tables_test.cpp)
