set(SOURCES session_fixture.h session_test.cpp take_back_test.cpp transport_test.cpp)
