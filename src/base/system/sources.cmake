set(SOURCES console.h crash_watch.h file_io.h file_types.h folder_listing.h interrupt.h
    known_folders.h locked_memory.h message_poster.h reachable_path.h read_steps.h single_start.h stream_copy.cpp
    stream_copy.h temporary_name.cpp temporary_name.h thread_timing.h title_bar.h virtual_memory.h)
if(WIN32)
  list(APPEND SOURCES atomic_write_windows.cpp console_windows.cpp crash_watch_windows.cpp
       file_handle.h file_io_windows.cpp file_types_windows.cpp fine_period_windows.cpp fine_period_windows.h
       folder_listing_windows.cpp interrupt_windows.cpp known_folders_windows.cpp
       locked_memory_windows.cpp message_poster_windows.cpp reachable_path_windows.cpp
       single_start_windows.cpp thread_timing_windows.cpp title_bar_windows.cpp
       virtual_memory_windows.cpp)
else()
  list(APPEND SOURCES atomic_write_posix.cpp console_posix.cpp crash_watch_posix.cpp descriptor.h
       file_io_posix.cpp file_types_posix.cpp folder_listing_posix.cpp interrupt_posix.cpp known_folders_posix.cpp
       locked_memory_posix.cpp message_poster_portable.cpp reachable_path_posix.cpp
       single_start_posix.cpp thread_timing_posix.cpp title_bar_posix.cpp
       virtual_memory_posix.cpp)
endif()
