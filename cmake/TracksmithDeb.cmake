# The Debian package, which `cpack -G DEB` makes of what is installed; see packaging/make_deb.sh.
set(CPACK_PACKAGE_NAME tracksmith)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_VENDOR "Tracksmith developers")
set(CPACK_PACKAGE_CONTACT "Tracksmith developers <developers@tracksmith.github.io>")
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "workbench for MIDI songs on arranger keyboards")
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_SECTION sound)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# A font, without which no window has text; sounds for the built-in instrument; Wayland.
set(CPACK_DEBIAN_PACKAGE_DEPENDS "fonts-dejavu-core | fonts-freefont-ttf")
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "timgm6mb-soundfont, qt6-wayland")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
"Tracksmith loads the Standard MIDI Files that arranger keyboards play,
prepares them for one of 109 instruments, and plays, mixes, checks, edits and
saves them. Voices are shown and picked by the instrument's own names, faults
are found and repaired, and a table replaces voices in whole collections.
.
The package has a window program and a command line for many files at once,
both in German and English.")
# What Debian wants compressed, and a copyright file in place of the licence alone.
set(CPACK_PRE_BUILD_SCRIPTS ${CMAKE_SOURCE_DIR}/packaging/debian/finish.cmake)
string(TIMESTAMP TRACKSMITH_RELEASE_DATE "%a, %d %b %Y %H:%M:%S +0000" UTC)
configure_file(${CMAKE_SOURCE_DIR}/packaging/debian/changelog.in
               ${CMAKE_BINARY_DIR}/debian/changelog @ONLY)
set(CPACK_TRACKSMITH_DEBIAN ${CMAKE_SOURCE_DIR}/packaging/debian ${CMAKE_BINARY_DIR}/debian)
include(CPack)
