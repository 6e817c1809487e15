# What is delivered: one folder that can lie anywhere, with all that the program needs beside it,
# since the program looks there for its data and writes there.
#     cmake --install build/release --prefix DIR      lays the folder
#     cpack --config build/release/CPackConfig.cmake  packs it
# The component "lapvane" is the program, its data and its manual; "portable" what such a folder has
# besides, which a package of the distribution (scripts/deb.sh) gets from the system.
set(files ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
install(TARGETS lapvane RUNTIME DESTINATION . COMPONENT lapvane)
install(TARGETS lapvane-tool RUNTIME DESTINATION . COMPONENT lapvane)
if(TARGET lapvane-instrument)
    install(TARGETS lapvane-instrument RUNTIME DESTINATION . COMPONENT lapvane)
endif()
# With the old tag the libraries that plugins ask for are looked for in lib/ as well.
set_target_properties(lapvane PROPERTIES INSTALL_RPATH "$ORIGIN/lib")
if(UNIX)
    target_link_options(lapvane PRIVATE -Wl,--disable-new-dtags)
endif()

install(FILES ${LAPVANE_DELIVERED}/LANGUAGES.DAT DESTINATION . COMPONENT lapvane)
install(DIRECTORY data/sensors data/tracks data/pages DESTINATION . COMPONENT lapvane)
install(DIRECTORY ${LAPVANE_DELIVERED}/sample DESTINATION . COMPONENT lapvane)
if(TARGET manual)
    install(DIRECTORY ${files}/manual DESTINATION . COMPONENT lapvane)
endif()
if(UNIX)
    foreach(page lapvane lapvane-tool lapvane-instrument)
        configure_file(docs/man/${page}.1 ${CMAKE_BINARY_DIR}/man/${page}.1 @ONLY)
        install(FILES ${CMAKE_BINARY_DIR}/man/${page}.1 DESTINATION man/man1 COMPONENT lapvane)
    endforeach()
endif()
install(FILES data/icons/lapvane.svg DESTINATION . COMPONENT portable)
# What the user may have changed in a folder that is brought up to date stays as it is.
install(CODE "
    set(to \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
    foreach(name RecentFiles.ini Esempio.pro)
        if(NOT EXISTS \"\${to}/\${name}\")
            file(INSTALL \"${CMAKE_SOURCE_DIR}/data/\${name}\" DESTINATION \"\${to}\")
        endif()
    endforeach()
    file(MAKE_DIRECTORY \"\${to}/ports\")" COMPONENT lapvane)

# Qt goes along, so that the folder runs where no Qt is installed.
option(LAPVANE_BUNDLE_QT "Install the libraries and plugins of Qt beside the program" ON)
get_target_property(qmake Qt6::qmake IMPORTED_LOCATION)
execute_process(COMMAND ${qmake} -query QT_INSTALL_PLUGINS OUTPUT_VARIABLE LAPVANE_QT_PLUGINS
                OUTPUT_STRIP_TRAILING_WHITESPACE)
execute_process(COMMAND ${qmake} -query QT_INSTALL_TRANSLATIONS
                OUTPUT_VARIABLE LAPVANE_QT_TRANSLATIONS OUTPUT_STRIP_TRAILING_WHITESPACE)
if(LAPVANE_BUNDLE_QT)
    install(FILES ${LAPVANE_QT_TRANSLATIONS}/qtbase_it.qm DESTINATION translations
            COMPONENT portable)
    install(FILES cmake/install/qt.conf DESTINATION . COMPONENT portable)
    if(CMAKE_CROSSCOMPILING)
        lapvane_install_runtime()
    elseif(WIN32)
        find_program(LAPVANE_WINDEPLOYQT windeployqt HINTS ${QT6_INSTALL_PREFIX}/bin REQUIRED)
        install(CODE "
            set(to \"\$ENV{DESTDIR}\${CMAKE_INSTALL_PREFIX}\")
            execute_process(COMMAND \"${LAPVANE_WINDEPLOYQT}\" --no-translations --plugindir
                            \"\${to}/plugins\" \"\${to}/lapvane.exe\" COMMAND_ERROR_IS_FATAL ANY)"
                COMPONENT portable)
    else()
        configure_file(cmake/install/bundle.cmake.in ${CMAKE_BINARY_DIR}/bundle.cmake @ONLY)
        install(SCRIPT ${CMAKE_BINARY_DIR}/bundle.cmake COMPONENT portable)
    endif()
endif()
# The licences of what is compiled into lapvane-tool ask to be handed on with it.
foreach(package libcli11-dev nlohmann-json3-dev)
    install(FILES /usr/share/doc/${package}/copyright DESTINATION licences RENAME ${package}.txt
            COMPONENT portable OPTIONAL)
endforeach()
if(UNIX)
    install(PROGRAMS cmake/install/add-to-menu DESTINATION . COMPONENT portable)
    install(FILES cmake/install/lapvane.desktop DESTINATION . COMPONENT portable)
endif()

set(CPACK_PACKAGE_NAME lapvane)
set(CPACK_PACKAGE_VENDOR Lapvane)
set(CPACK_PACKAGE_DESCRIPTION_SUMMARY "Desktop companion of a motorsport dashboard and data logger")
set(CPACK_COMPONENTS_ALL lapvane portable)
set(CPACK_STRIP_FILES ON)
set(CPACK_SOURCE_GENERATOR "")
if(WIN32)
    set(CPACK_GENERATOR ZIP)
    set(CPACK_PACKAGE_FILE_NAME lapvane-${PROJECT_VERSION}-windows-x86_64)
else()
    set(CPACK_GENERATOR TGZ)
    string(TOLOWER ${CMAKE_SYSTEM_NAME} system)
    set(CPACK_PACKAGE_FILE_NAME lapvane-${PROJECT_VERSION}-${system}-${CMAKE_SYSTEM_PROCESSOR})
endif()
include(CPack)
