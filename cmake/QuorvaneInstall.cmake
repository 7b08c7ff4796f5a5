# What `cmake --install` puts where (the folders: QuorvaneInstallDirs.cmake):
# the two programs and the files they ship and, on Linux, the desktop
# integration (menu entry, icons, AppStream data, the .qvn file type) and the
# manual pages, written at build time from the programs' own --help.
install(TARGETS quorvane quorvane-cli RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${PROJECT_SOURCE_DIR}/src/data/int.ini ${PROJECT_SOURCE_DIR}/src/data/pattern.ini
        DESTINATION ${QUORVANE_INSTALL_DATADIR})
install(DIRECTORY ${PROJECT_SOURCE_DIR}/src/data/help DESTINATION ${QUORVANE_INSTALL_DATADIR})

if(WIN32 OR APPLE)
    install(FILES ${PROJECT_SOURCE_DIR}/LICENSE DESTINATION ${QUORVANE_INSTALL_DATADIR}
            RENAME LICENSE.txt)
    return()
endif()

install(FILES ${PROJECT_SOURCE_DIR}/LICENSE
        DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/quorvane RENAME copyright)

set(linux_files ${PROJECT_SOURCE_DIR}/packaging/linux)
set(generated_files ${PROJECT_BINARY_DIR}/packaging)

# The desktop entry and the AppStream data carry the name, version and web
# addresses the program is built with.
configure_file(${linux_files}/quorvane.desktop.in
               ${generated_files}/${QUORVANE_APP_ID}.desktop @ONLY)
configure_file(${linux_files}/quorvane.metainfo.xml.in
               ${generated_files}/${QUORVANE_APP_ID}.metainfo.xml @ONLY)
install(FILES ${generated_files}/${QUORVANE_APP_ID}.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${generated_files}/${QUORVANE_APP_ID}.metainfo.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${linux_files}/quorvane-mime.xml
        DESTINATION ${CMAKE_INSTALL_DATADIR}/mime/packages RENAME ${QUORVANE_APP_ID}.xml)

set(icon_theme ${CMAKE_INSTALL_DATADIR}/icons/hicolor)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/quorvane.svg
        DESTINATION ${icon_theme}/scalable/apps RENAME ${QUORVANE_APP_ID}.svg)
foreach(size 16 24 32 48 64 128 256)
    install(FILES ${PROJECT_SOURCE_DIR}/packaging/icons/png/quorvane-${size}.png
            DESTINATION ${icon_theme}/${size}x${size}/apps RENAME ${QUORVANE_APP_ID}.png)
endforeach()

# help2man runs each program with --help and --version; neither needs a
# display or touches the program directory.
find_program(HELP2MAN help2man)
find_program(GZIP gzip)
if(NOT HELP2MAN OR NOT GZIP)
    message(STATUS "help2man or gzip not found: no manual pages (tools/setup.sh installs them)")
    return()
endif()
set(man_summary_quorvane "keep practice-bot lists for Unreal Tournament")
set(man_summary_quorvane-cli "keep practice-bot lists for Unreal Tournament from the command line")
set(man_pages "")
foreach(program quorvane quorvane-cli)
    set(page ${PROJECT_BINARY_DIR}/man/${program}.1)
    set(sections ${linux_files}/${program}.h2m ${linux_files}/files.h2m)
    list(TRANSFORM sections PREPEND --include= OUTPUT_VARIABLE include_options)
    add_custom_command(OUTPUT ${page}.gz
        COMMAND ${CMAKE_COMMAND} -E env ASAN_OPTIONS=detect_leaks=0
                ${HELP2MAN} --no-info --section=1 --name=${man_summary_${program}}
                ${include_options} --output=${page} $<TARGET_FILE:${program}>
        COMMAND ${GZIP} -9 -n -f ${page}
        DEPENDS ${program} ${sections}
        COMMENT "Writing the manual page of ${program} from its --help"
        VERBATIM)
    list(APPEND man_pages ${page}.gz)
endforeach()
add_custom_target(quorvane_manpages ALL DEPENDS ${man_pages})
install(FILES ${man_pages} DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
