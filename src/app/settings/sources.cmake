set(SOURCES file_association.cpp file_association.h settings_store.cpp settings_store.h my_registry.cpp
    my_registry.h texts.cpp texts.h)
if(WIN32)
  list(APPEND SOURCES my_registry_windows.cpp)
else()
  list(APPEND SOURCES my_registry_file.cpp)
endif()
