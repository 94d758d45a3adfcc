# The packages that script/package makes with CPack: velto and, if Qt WebEngine is installed, velto-video, which plays videos in the
# panel. It is a package of its own, so that nobody has to install a browser engine.

set(VELTO_MAINTAINER "The Velto developers <developers@velto.invalid>" CACHE STRING "Who answers for the package: NAME <ADDRESS>")

# velto_qml_packages(VAR FILE...): the Debian packages of all QML modules that these views import, directly or indirectly. They are
# loaded by name, so no linker finds them.
function(velto_qml_packages variable)
    # Qt 6's own scanner, not the first one on the path, which may belong to another Qt.
    get_target_property(scanner Qt6::qmlimportscanner LOCATION)
    set(modules ${QT6_INSTALL_PREFIX}/${QT6_INSTALL_QML})
    execute_process(COMMAND ${scanner} -qmlFiles ${ARGN} -importPath ${modules}
        OUTPUT_VARIABLE imports COMMAND_ERROR_IS_FATAL ANY)
    string(JSON count LENGTH "${imports}")
    math(EXPR last "${count} - 1")
    foreach(index RANGE ${last})
        string(JSON name GET "${imports}" ${index} name)
        string(JSON path ERROR_VARIABLE unresolved GET "${imports}" ${index} path)
        if(NOT name MATCHES "^Qt")
            continue()
        endif()
        set(package)
        if(NOT unresolved)
            execute_process(COMMAND dpkg-query -S ${path}/qmldir OUTPUT_VARIABLE owner ERROR_QUIET)
            if(owner MATCHES "^([^:,]+)")
                set(package ${CMAKE_MATCH_1})
            endif()
        endif()
        if(NOT package)
            # Debian's naming rule.
            string(TOLOWER "qml6-module-${name}" package)
            string(REPLACE "." "-" package ${package})
        endif()
        list(APPEND packages ${package})
    endforeach()
    list(REMOVE_DUPLICATES packages)
    list(SORT packages)
    set(${variable} ${packages} PARENT_SCOPE)
endfunction()

find_program(DPKG_QUERY dpkg-query)
if(DPKG_QUERY)
    file(GLOB_RECURSE views CONFIGURE_DEPENDS ${PROJECT_SOURCE_DIR}/src/*.qml)
    list(FILTER views EXCLUDE REGEX "/src/Video/")
    velto_qml_packages(depends ${views})
    velto_qml_packages(video_depends ${PROJECT_SOURCE_DIR}/src/Video/Player.qml)
endif()
# What the program runs or loads by name: the hooks call curl, links are opened by xdg-open, secrets go to the keyring.
list(APPEND depends curl libsecret-1-0 xdg-utils)
list(JOIN depends ", " CPACK_DEBIAN_VELTO_PACKAGE_DEPENDS)
list(JOIN video_depends ", " CPACK_DEBIAN_VIDEO_PACKAGE_DEPENDS)
string(APPEND CPACK_DEBIAN_VIDEO_PACKAGE_DEPENDS ", velto (= ${PROJECT_VERSION})")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME velto)
set(CPACK_PACKAGE_VENDOR "The Velto developers")
set(CPACK_DEBIAN_VELTO_DESCRIPTION
"says at the top of the screen which coding agents wait for you
Velto is a black strip at the top centre of the screen. It shows at a
glance which Claude Code sessions wait for you and which are working.
.
When something changes, one line slides out of it; when a session wants
to run a tool, that line asks, and the answer goes back to the session.
It runs under X11 and under Wayland.")
set(CPACK_DEBIAN_VIDEO_DESCRIPTION
"plays videos in the panel of Velto
With this, a video whose link was copied plays in place. Without it the link
opens in the browser.")
set(CPACK_DEB_COMPONENT_INSTALL ON)
set(CPACK_COMPONENTS_ALL velto)
if(TARGET velto-video)
    list(APPEND CPACK_COMPONENTS_ALL video)
endif()
set(CPACK_DEBIAN_VELTO_PACKAGE_NAME velto)
set(CPACK_DEBIAN_VIDEO_PACKAGE_NAME velto-video)
set(CPACK_PACKAGING_INSTALL_PREFIX /usr)
set(CPACK_STRIP_FILES ON)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_MAINTAINER ${VELTO_MAINTAINER})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
set(CPACK_DEBIAN_PACKAGE_CONTROL_STRICT_PERMISSION ON)
set(CPACK_DEBIAN_VELTO_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus, fonts-inter, qt6-wayland, qt6-svg-plugins | libqt6svg6")
set(CPACK_DEBIAN_VELTO_PACKAGE_SUGGESTS "gh, git, velto-video, gnome-keyring | org.freedesktop.secrets")

# Debian's policy also requires the changelog in its own format.
find_package(Python3 REQUIRED COMPONENTS Interpreter)
set(changelog ${PROJECT_BINARY_DIR}/packaging/changelog.gz)
add_custom_command(
    OUTPUT ${changelog}
    COMMAND ${Python3_EXECUTABLE} ${PROJECT_SOURCE_DIR}/cmake/debian-changelog.py ${PROJECT_SOURCE_DIR}/CHANGELOG.md
        ${VELTO_MAINTAINER} ${changelog}
    DEPENDS cmake/debian-changelog.py ${PROJECT_SOURCE_DIR}/CHANGELOG.md
    VERBATIM)
add_custom_target(velto-changelog ALL DEPENDS ${changelog})
install(FILES ${changelog} DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velto)
install(FILES ${changelog} ${PROJECT_SOURCE_DIR}/packaging/copyright DESTINATION ${CMAKE_INSTALL_DATADIR}/doc/velto-video
    COMPONENT video EXCLUDE_FROM_ALL)

include(CPack)
