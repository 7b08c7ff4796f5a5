# `cpack` in a build folder. Linux: a Debian package, whose library
# dependencies dpkg-shlibdeps reads from the binaries, and a .tar.gz of the
# same tree (it runs from wherever it is unpacked). Windows: a zip of the
# one-folder layout, after windeployqt has added Qt (README.md).
set(CPACK_PACKAGE_NAME quorvane)
set(CPACK_PACKAGE_VENDOR "Quorvane developers")
set(CPACK_PACKAGE_CONTACT "Quorvane developers <quorvane@example.org>")
set(CPACK_PACKAGE_HOMEPAGE_URL ${QUORVANE_WEBSITE_URL})
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "practice-bot list keeper for Unreal Tournament")
set(CPACK_PACKAGE_DESCRIPTION [[
Unreal Tournament takes the 32 bots of its practice matches from a list in
its User.ini. Quorvane keeps any number of such lists as files of their own,
edits them bot by bot and puts the chosen one into the game, leaving the rest
of User.ini as it was. It comes with quorvane-cli, a command-line program for
the same lists.]])
set(CPACK_RESOURCE_FILE_LICENSE ${PROJECT_SOURCE_DIR}/LICENSE)
set(CPACK_STRIP_FILES ON)

if(WIN32)
    set(CPACK_GENERATOR ZIP)
else()
    set(CPACK_GENERATOR DEB TGZ)
endif()

set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE 1)
set(CPACK_DEBIAN_PACKAGE_SECTION games)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# Qt loads its platform plugin at run time, out of dpkg-shlibdeps' sight;
# xdg-open opens the user guide and the web pages.
set(CPACK_DEBIAN_PACKAGE_DEPENDS qt6-qpa-plugins)
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS xdg-utils)

include(CPack)
