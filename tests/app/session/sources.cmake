set(SOURCES ../../support/failing_allocation.cpp output_choice_test.cpp session_fixture.h session_test.cpp take_back_test.cpp transport_test.cpp)
