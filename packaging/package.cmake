# The files of the package, where they are installed, and what CPack makes of them. The target `package_files`
# makes all of them.
find_package(Qt6 REQUIRED COMPONENTS Svg)
find_program(VARNET_GZIP gzip REQUIRED)

set(VARNET_MAINTAINER "Varnet <maintainers@varnet.invalid>" CACHE STRING "Who answers for the package")
set(VARNET_HOMEPAGE "" CACHE STRING "Where people read about the program; empty: nowhere yet")
set(VARNET_SCREENSHOTS "" CACHE STRING
    "Address of a folder with the files of docs/pictures; empty: the pictures come with the package alone")

# The moment of what is packaged, not of the packaging: the same sources give the same package.
set(moment "$ENV{SOURCE_DATE_EPOCH}")
if(NOT moment)
    execute_process(COMMAND git -C ${CMAKE_SOURCE_DIR} log -1 --format=%ct OUTPUT_VARIABLE moment
                    OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
endif()
if(NOT moment)
    string(TIMESTAMP moment %s UTC)
endif()
set(ENV{SOURCE_DATE_EPOCH} "${moment}")
string(TIMESTAMP VARNET_PACKAGE_DAY "%Y-%m-%d" UTC)
string(TIMESTAMP VARNET_PACKAGE_YEAR "%Y" UTC)
string(TIMESTAMP VARNET_PACKAGE_MOMENT "%a, %d %b %Y %H:%M:%S +0000" UTC)
set(VARNET_PACKAGE_VERSION "${PROJECT_VERSION}-${VARNET_BUILD}")

add_executable(varnet_package_parts parts.cpp)
target_link_libraries(varnet_package_parts PRIVATE VarnetPackageTexts VarnetMascot VarnetPlatform Qt6::Svg)

set(parts "${CMAKE_CURRENT_BINARY_DIR}/parts")
add_custom_command(
    OUTPUT "${parts}/options.man"
    COMMAND varnet_package_parts "${parts}"
    DEPENDS varnet_package_parts
    COMMENT "Drawing icons, writing completions"
    VERBATIM)

# packaged(OUTPUT INPUT [COMPRESSED]): a text with its @VARIABLES@ filled in.
set(package_outputs "${parts}/options.man")
function(packaged output input)
    cmake_parse_arguments(ARG "COMPRESSED" "" "" ${ARGN})
    set(settings)
    foreach(name PROJECT_VERSION VARNET_PACKAGE_DAY VARNET_PACKAGE_YEAR VARNET_PACKAGE_MOMENT VARNET_PACKAGE_VERSION
                 VARNET_MAINTAINER VARNET_HOMEPAGE VARNET_SCREENSHOTS)
        list(APPEND settings "-D${name}=${${name}}")
    endforeach()
    add_custom_command(
        OUTPUT "${CMAKE_CURRENT_BINARY_DIR}/${output}"
        COMMAND ${CMAKE_COMMAND} ${settings} "-DINPUT=${input}" "-DOUTPUT=${CMAKE_CURRENT_BINARY_DIR}/${output}"
                "-DOPTIONS=${parts}/options.man" "-DGZIP=$<$<BOOL:${ARG_COMPRESSED}>:${VARNET_GZIP}>" -P
                "${CMAKE_CURRENT_SOURCE_DIR}/fill.cmake"
        DEPENDS "${input}" fill.cmake "${parts}/options.man"
        VERBATIM)
    set(package_outputs ${package_outputs} "${CMAKE_CURRENT_BINARY_DIR}/${output}" PARENT_SCOPE)
endfunction()

set(here "${CMAKE_CURRENT_SOURCE_DIR}")
packaged(varnet.1.gz "${here}/varnet.1.in" COMPRESSED)
packaged(changelog.Debian.gz "${here}/changelog.in" COMPRESSED)
packaged(changelog.gz "${CMAKE_SOURCE_DIR}/CHANGELOG.md" COMPRESSED)
packaged(copyright "${here}/copyright.in")
packaged(com.varnet.Varnet.metainfo.xml "${here}/com.varnet.Varnet.metainfo.xml.in")
add_custom_target(package_files DEPENDS ${package_outputs})

include(GNUInstallDirs)
set(made "${CMAKE_CURRENT_BINARY_DIR}")
set(share "${CMAKE_INSTALL_DATADIR}")
set(doc "${share}/doc/varnet")
install(TARGETS varnet RUNTIME DESTINATION ${CMAKE_INSTALL_BINDIR})
# More than a plain strip takes away: what compilers sign with stays out, too.
install(CODE "execute_process(
    COMMAND \"${CMAKE_STRIP}\" --strip-unneeded --remove-section=.comment --remove-section=.note
            \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}/${CMAKE_INSTALL_BINDIR}/varnet\"
    COMMAND_ERROR_IS_FATAL ANY)")
install(FILES com.varnet.Varnet.desktop DESTINATION ${share}/applications)
install(FILES com.varnet.Varnet.service DESTINATION ${share}/dbus-1/services)
install(FILES "${made}/com.varnet.Varnet.metainfo.xml" DESTINATION ${share}/metainfo)
install(DIRECTORY "${parts}/icons/" DESTINATION ${share}/icons/hicolor)
install(FILES "${made}/varnet.1.gz" DESTINATION ${CMAKE_INSTALL_MANDIR}/man1)
install(FILES "${parts}/varnet.bash" DESTINATION ${share}/bash-completion/completions RENAME varnet)
install(FILES "${parts}/_varnet" DESTINATION ${share}/zsh/vendor-completions)
install(FILES "${parts}/varnet.fish" DESTINATION ${share}/fish/vendor_completions.d)
# What the setting "Launch at login" writes for a user, for those who set up machines for others.
install(FILES "${parts}/autostart/com.varnet.Varnet.desktop" DESTINATION ${doc}/examples/autostart)
install(FILES "${made}/copyright" "${made}/changelog.gz" "${made}/changelog.Debian.gz" DESTINATION ${doc})
install(FILES lintian-overrides DESTINATION ${share}/lintian/overrides RENAME varnet)
install(DIRECTORY ${CMAKE_SOURCE_DIR}/docs/pictures DESTINATION ${doc} FILES_MATCHING PATTERN "*.png")

set(CPACK_GENERATOR DEB)
set(CPACK_PACKAGE_NAME varnet)
set(CPACK_PACKAGE_VERSION ${PROJECT_VERSION})
set(CPACK_PACKAGE_CONTACT "${VARNET_MAINTAINER}")
set(CPACK_PACKAGE_VENDOR Varnet)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "see what keeps this machine busy, and which of it may go")
set(CPACK_PACKAGE_DESCRIPTION
    "Varnet is a tray utility for developers' machines. It measures every process,
groups them into applications, projects, system and unassigned work,
recognises local development servers and the AI coding agents that started
them, and points out what needs attention. Beside that it shows CPU, memory,
fans, heat and battery, and what project folders and the whole disk occupy.
.
It never stops or deletes anything by itself, and what it measures stays on
this machine.")
set(CPACK_PACKAGE_DIRECTORY ${CMAKE_BINARY_DIR}/deb)
set(CPACK_INSTALL_DEFAULT_DIRECTORY_PERMISSIONS
    OWNER_READ OWNER_WRITE OWNER_EXECUTE GROUP_READ GROUP_EXECUTE WORLD_READ WORLD_EXECUTE)
set(CPACK_DEBIAN_FILE_NAME DEB-DEFAULT)
set(CPACK_DEBIAN_PACKAGE_RELEASE ${VARNET_BUILD})
set(CPACK_DEBIAN_PACKAGE_SECTION utils)
set(CPACK_DEBIAN_PACKAGE_PRIORITY optional)
set(CPACK_DEBIAN_PACKAGE_HOMEPAGE "${VARNET_HOMEPAGE}")
set(CPACK_DEBIAN_COMPRESSION_TYPE xz)
set(CPACK_DEBIAN_PACKAGE_SHLIBDEPS ON)
# What is loaded by name when the program runs, which no tool can see: QML modules, the keyring's library, and
# the zones of dates.
string(
    JOIN
    ", "
    CPACK_DEBIAN_PACKAGE_DEPENDS
    libsecret-1-0
    qml6-module-qtqml
    qml6-module-qtqml-models
    qml6-module-qtqml-workerscript
    qml6-module-qtquick
    qml6-module-qtquick-controls
    qml6-module-qtquick-dialogs
    qml6-module-qtquick-layouts
    qml6-module-qtquick-templates
    qml6-module-qtquick-window
    qml6-module-qt-labs-folderlistmodel
    tzdata)
# The typeface it is drawn for, a bus to be one instance on, Git for what may go, native windows on Wayland.
set(CPACK_DEBIAN_PACKAGE_RECOMMENDS "default-dbus-session-bus | dbus-session-bus, fonts-inter, git, qt6-wayland")
# The self-check starts a server with it.
set(CPACK_DEBIAN_PACKAGE_SUGGESTS python3)
include(CPack)
