set(SOURCES ../support/failing_allocation.cpp undo_test.cpp)
