# What `cpack` puts in the Debian package (scripts/package builds it): the
# program, its desktop entry and icon, the license, and upper.alt beside the
# program, where the program copies it into a data folder from.
#
# The program lies in /usr/lib/hotkeys with /usr/bin/hotkeys a link to it: the
# program's folder is where the link leads, so upper.alt and the connection log
# stay beside the program and out of /usr/bin.
set(HK_PACKAGE_MAINTAINER "ZEL Hot Keys <hotkeys@zel.invalid>"
    CACHE STRING "Maintainer field of the Debian package")
set(HK_UPPER_ALT "" CACHE FILEPATH "The suite's upper.alt, installed beside the program")

include(GNUInstallDirs)
set(hk_program_dir lib/hotkeys)
install(TARGETS hotkeys RUNTIME DESTINATION ${hk_program_dir})
file(MAKE_DIRECTORY ${PROJECT_BINARY_DIR}/packaging)
file(CREATE_LINK ../${hk_program_dir}/hotkeys ${PROJECT_BINARY_DIR}/packaging/hotkeys SYMBOLIC)
install(FILES ${PROJECT_BINARY_DIR}/packaging/hotkeys DESTINATION ${CMAKE_INSTALL_BINDIR})
if(HK_UPPER_ALT)
  install(FILES ${HK_UPPER_ALT} DESTINATION ${hk_program_dir} RENAME upper.alt)
endif()
install(FILES ${PROJECT_SOURCE_DIR}/packaging/hotkeys.desktop
        DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/hotkeys.svg
        DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps)

# Debian wants the changelog and the manual page compressed the same way every time.
configure_file(${PROJECT_SOURCE_DIR}/packaging/changelog.in ${PROJECT_BINARY_DIR}/packaging/changelog
               @ONLY)
configure_file(${PROJECT_SOURCE_DIR}/packaging/hotkeys.1 ${PROJECT_BINARY_DIR}/packaging/hotkeys.1
               COPYONLY)
execute_process(COMMAND gzip -n -9 -f -k ${PROJECT_BINARY_DIR}/packaging/changelog
                        ${PROJECT_BINARY_DIR}/packaging/hotkeys.1)
install(FILES ${PROJECT_BINARY_DIR}/packaging/hotkeys.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${PROJECT_SOURCE_DIR}/packaging/copyright ${PROJECT_BINARY_DIR}/packaging/changelog.gz
        DESTINATION ${CMAKE_INSTALL_DOCDIR})

# The package needs the program only, not the tests and tools of `all`.
set(CMAKE_SKIP_INSTALL_ALL_DEPENDENCY ON)
set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME hotkeys)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "hot key panel designer for a point-of-sale sales screen")
set(CPACK_DEBIAN_PACKAGE_DESCRIPTION
    "The back-office program with which a store lays out the hot key panels of\n"
    "its point-of-sale sales screen: sets of four columns of eight keys kept as\n"
    "small text files in the store's shared data folder, an item lookup over the\n"
    "store's database (SQLite, PostgreSQL or SQL Server), a trial panel, special\n"
    "and coupon keys, and printed reports with preview, PDF and mail.")
string(REPLACE ";" "" CPACK_DEBIAN_PACKAGE_DESCRIPTION "${CPACK_DEBIAN_PACKAGE_DESCRIPTION}")
set(CPACK_DEBIAN_PACKAGE_MAINTAINER "${HK_PACKAGE_MAINTAINER}")
set(CPACK_DEBIAN_PACKAGE_SECTION misc)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
# The libraries the program links come from dpkg-shlibdeps; the SQL drivers
# are plugins that Qt loads by name, and without a font every text is empty.
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_DEPENDS "libqt6sql6-sqlite, libqt6sql6-psql, libqt6sql6-odbc, fonts-dejavu-core")
# SQL Server through ODBC needs FreeTDS on Linux.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "tdsodbc")
include(CPack)
