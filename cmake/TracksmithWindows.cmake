# What the programs need on Windows beside their code.

# tracksmith_windows_resources(program description): puts the version of the project, the icon and
# the manifest into the program's file.
function(tracksmith_windows_resources program description)
  if(NOT WIN32)
    return()
  endif()
  set(TRACKSMITH_RESOURCES ${CMAKE_SOURCE_DIR}/packaging/windows)
  set(TRACKSMITH_PROGRAM ${program})
  set(TRACKSMITH_DESCRIPTION ${description})
  set(script ${CMAKE_BINARY_DIR}/resources/${program}.rc)
  configure_file(${TRACKSMITH_RESOURCES}/program.rc.in ${script} @ONLY)
  set_source_files_properties(${script} PROPERTIES OBJECT_DEPENDS
    "${TRACKSMITH_RESOURCES}/tracksmith.ico;${TRACKSMITH_RESOURCES}/tracksmith.manifest")
  target_sources(${program} PRIVATE ${script})
endfunction()

# tracksmith_offscreen(target): links the platform plugin of Qt by which a target runs without a
# screen, as tests do. Only a static Qt must be told; others find it themselves.
function(tracksmith_offscreen target)
  get_target_property(type Qt6::Core TYPE)
  if(type STREQUAL STATIC_LIBRARY)
    qt_import_plugins(${target} INCLUDE Qt6::QOffscreenIntegrationPlugin)
  endif()
endfunction()
