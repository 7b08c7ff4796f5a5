# Where `cmake --install` puts the program. Linux: the usual places
# (GNUInstallDirs), the shipped int.ini, pattern.ini and user guide in
# share/quorvane. Windows: everything in one folder, the layout of the zip a
# player unpacks.
if(WIN32)
    set(CMAKE_INSTALL_BINDIR . CACHE STRING "Executables, relative to the prefix")
    set(QUORVANE_INSTALL_DATADIR .)
else()
    include(GNUInstallDirs)
    set(QUORVANE_INSTALL_DATADIR ${CMAKE_INSTALL_DATADIR}/quorvane)
endif()

# The programs find the shipped files from their own folder, so that an
# installation can be moved (the .tar.gz, a DESTDIR root).
cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_BINDIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
           NORMALIZE OUTPUT_VARIABLE quorvane_bin_dir)
cmake_path(ABSOLUTE_PATH QUORVANE_INSTALL_DATADIR BASE_DIRECTORY ${CMAKE_INSTALL_PREFIX}
           NORMALIZE OUTPUT_VARIABLE quorvane_data_dir)
cmake_path(RELATIVE_PATH quorvane_data_dir BASE_DIRECTORY ${quorvane_bin_dir}
           OUTPUT_VARIABLE QUORVANE_DATA_FROM_EXECUTABLE)
if(QUORVANE_DATA_FROM_EXECUTABLE STREQUAL "")
    set(QUORVANE_DATA_FROM_EXECUTABLE .)
endif()
