# What `cmake --install` copies. The programs look for their data in ../share/tracksmith beside them.
include(GNUInstallDirs)
set(data ${CMAKE_INSTALL_DATADIR}/tracksmith)
set(id ${TRACKSMITH_ID})

install(TARGETS tracksmith-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(DIRECTORY data/voices data/drums data/identity data/demo DESTINATION ${data})
# The guides with their pictures, for Help > User Guide.
install(FILES docs/user-guide.md docs/benutzerhandbuch.md DESTINATION ${data}/docs)
install(DIRECTORY docs/ DESTINATION ${data}/docs FILES_MATCHING PATTERN *.png)
install(FILES LICENSE README.md CHANGELOG.md DESTINATION ${CMAKE_INSTALL_DOCDIR})
if(NOT WIN32)
  install(FILES docs/tracksmith-cli.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
  install(FILES packaging/bash-completion/tracksmith-cli
          DESTINATION ${CMAKE_INSTALL_DATADIR}/bash-completion/completions)
endif()

if(TRACKSMITH_GUI)
  install(TARGETS tracksmith RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
  if(NOT WIN32)
    install(FILES docs/tracksmith.1 DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
    set(icons ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
    install(FILES packaging/${id}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
    install(FILES packaging/${id}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
    install(FILES packaging/icons/${id}.svg DESTINATION ${icons}/scalable/apps)
    foreach(size IN ITEMS 16 22 24 32 48 64 128 256 512)
      install(FILES packaging/icons/${id}-${size}.png DESTINATION ${icons}/${size}x${size}/apps
              RENAME ${id}.png)
    endforeach()
  endif()
endif()
