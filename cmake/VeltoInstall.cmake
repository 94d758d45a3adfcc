# What an installation consists of. The version is that of project(); its date is that of its heading in CHANGELOG.md.
include(GNUInstallDirs)
set(CMAKE_INSTALL_DEFAULT_COMPONENT_NAME velto)

file(STRINGS ${PROJECT_SOURCE_DIR}/CHANGELOG.md heading REGEX "^## ${PROJECT_VERSION}, ")
if(NOT heading MATCHES "^## [0-9.]+, ([0-9]+-[0-9]+-[0-9]+)$")
    message(FATAL_ERROR "CHANGELOG.md has no heading \"## ${PROJECT_VERSION}, YEAR-MONTH-DAY\" for this version")
endif()
set(VELTO_RELEASE_DATE ${CMAKE_MATCH_1})
set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/CHANGELOG.md)

set(from ${PROJECT_SOURCE_DIR}/packaging)
set(made ${PROJECT_BINARY_DIR}/packaging)
configure_file(${from}/velto.desktop.in ${made}/${VELTO_APPLICATION_ID}.desktop @ONLY)
set(VELTO_HOMEPAGE "https://velto.invalid/" CACHE STRING "The project's own page, as software centres show it")
configure_file(${from}/velto.metainfo.xml.in ${made}/${VELTO_APPLICATION_ID}.metainfo.xml @ONLY)
configure_file(${from}/velto.1.in ${made}/velto.1 @ONLY)

find_program(GZIP gzip REQUIRED)
add_custom_command(
    OUTPUT ${made}/velto.1.gz
    COMMAND ${GZIP} -9nc velto.1 > velto.1.gz
    DEPENDS ${made}/velto.1
    WORKING_DIRECTORY ${made}
    VERBATIM)
add_custom_target(velto-manual ALL DEPENDS ${made}/velto.1.gz)

install(TARGETS velto RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
install(FILES ${made}/${VELTO_APPLICATION_ID}.desktop DESTINATION ${CMAKE_INSTALL_DATADIR}/applications)
install(FILES ${made}/${VELTO_APPLICATION_ID}.metainfo.xml DESTINATION ${CMAKE_INSTALL_DATADIR}/metainfo)
install(FILES ${from}/icons/velto.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/scalable/apps
    RENAME ${VELTO_APPLICATION_ID}.svg)
install(FILES ${from}/icons/velto-symbolic.svg DESTINATION ${CMAKE_INSTALL_DATADIR}/icons/hicolor/symbolic/apps
    RENAME ${VELTO_APPLICATION_ID}-symbolic.svg)
install(FILES ${made}/velto.1.gz DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES ${from}/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velto)

install(TARGETS velto-folders RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/velto)
# Beside the program, which works without it: see LinuxVideoPlayer.
if(TARGET velto-video)
    install(TARGETS velto-video RUNTIME DESTINATION ${CMAKE_INSTALL_LIBEXECDIR}/velto COMPONENT video)
endif()

# The session bus needs an absolute path, and the prefix is known only at installation.
install(CODE "
    cmake_path(ABSOLUTE_PATH CMAKE_INSTALL_PREFIX NORMALIZE OUTPUT_VARIABLE prefix)
    cmake_path(APPEND prefix \"${CMAKE_INSTALL_BINDIR}\" velto OUTPUT_VARIABLE VELTO_PROGRAM)
    set(VELTO_APPLICATION_ID ${VELTO_APPLICATION_ID})
    configure_file(\"${from}/velto.service.in\" \"${made}/${VELTO_APPLICATION_ID}.service\" @ONLY)")
install(FILES ${made}/${VELTO_APPLICATION_ID}.service DESTINATION ${CMAKE_INSTALL_DATADIR}/dbus-1/services)
