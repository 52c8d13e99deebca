set(SOURCES file_io.h folder_listing.h interrupt.h known_folders.h locked_memory.h message_poster.h
    stream_copy.cpp stream_copy.h temporary_name.cpp temporary_name.h thread_timing.h
    virtual_memory.h)
if(WIN32)
  list(APPEND SOURCES atomic_write_windows.cpp file_handle.h file_io_windows.cpp
       folder_listing_windows.cpp interrupt_windows.cpp known_folders_windows.cpp
       locked_memory_windows.cpp message_poster_windows.cpp thread_timing_windows.cpp
       virtual_memory_windows.cpp)
else()
  list(APPEND SOURCES atomic_write_posix.cpp descriptor.h file_io_posix.cpp
       folder_listing_posix.cpp interrupt_posix.cpp known_folders_posix.cpp
       locked_memory_posix.cpp message_poster_portable.cpp thread_timing_posix.cpp
       virtual_memory_posix.cpp)
endif()
