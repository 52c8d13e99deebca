set(SOURCES backend.cpp backend.h driver.cpp driver.h loop_cable.cpp loop_cable.h)
