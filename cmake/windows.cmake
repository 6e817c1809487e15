# What a program for Windows needs beside it, laid into bin/ as the package lays it: Qt's libraries and
# plugins, the runtime of the compiler. For a cross build only: with a Qt that was installed on Windows
# the programs of the build find it by the path, and windeployqt lays it for the package.
set(LAPVANE_RUNTIME_FILES)
foreach(library Core Gui Widgets PrintSupport Test)
    list(APPEND LAPVANE_RUNTIME_FILES ${LAPVANE_QT_WINDOWS}/bin/Qt6${library}.dll)
endforeach()
foreach(library libstdc++-6 libgcc_s_seh-1 libwinpthread-1)
    execute_process(COMMAND ${CMAKE_CXX_COMPILER} -print-file-name=${library}.dll
                    OUTPUT_VARIABLE file OUTPUT_STRIP_TRAILING_WHITESPACE)
    if(NOT IS_ABSOLUTE "${file}")
        set(file /usr/x86_64-w64-mingw32/lib/${library}.dll)
    endif()
    list(APPEND LAPVANE_RUNTIME_FILES ${file})
endforeach()
set(LAPVANE_RUNTIME_PLUGINS platforms/qwindows imageformats/qico imageformats/qjpeg)

set(commands
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${LAPVANE_RUNTIME_FILES}
            ${CMAKE_SOURCE_DIR}/cmake/install/qt.conf ${CMAKE_RUNTIME_OUTPUT_DIRECTORY})
find_file(LAPVANE_QT_ITALIAN qtbase_it.qm PATHS /usr/share/qt6/translations REQUIRED NO_CMAKE_FIND_ROOT_PATH)
# The tests and the tour run without a screen too.
foreach(plugin ${LAPVANE_RUNTIME_PLUGINS} platforms/qoffscreen)
    get_filename_component(folder ${plugin} DIRECTORY)
    list(APPEND commands
        COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/plugins/${folder}
        COMMAND ${CMAKE_COMMAND} -E copy_if_different ${LAPVANE_QT_WINDOWS}/plugins/${plugin}.dll
                ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/plugins/${folder})
endforeach()
list(APPEND commands
    COMMAND ${CMAKE_COMMAND} -E make_directory ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/translations
    COMMAND ${CMAKE_COMMAND} -E copy_if_different ${LAPVANE_QT_ITALIAN}
            ${CMAKE_RUNTIME_OUTPUT_DIRECTORY}/translations)
add_custom_target(lapvane_runtime ${commands} VERBATIM)

# Licences ask to be handed on: Qt's with what it has taken in from others, that of the runtime.
function(lapvane_install_runtime)
    set(delivered ${LAPVANE_RUNTIME_FILES})
    list(FILTER delivered EXCLUDE REGEX "/Qt6Test\\.dll$")
    install(FILES ${delivered} DESTINATION . COMPONENT portable)
    foreach(plugin IN LISTS LAPVANE_RUNTIME_PLUGINS)
        get_filename_component(folder ${plugin} DIRECTORY)
        install(FILES ${LAPVANE_QT_WINDOWS}/plugins/${plugin}.dll DESTINATION plugins/${folder}
                COMPONENT portable)
    endforeach()
    install(DIRECTORY ${LAPVANE_QT_WINDOWS}/licences DESTINATION . COMPONENT portable)
    install(FILES /usr/share/doc/gcc-mingw-w64-x86-64-posix-runtime/copyright DESTINATION licences
            RENAME gcc-runtime.txt COMPONENT portable)
    install(FILES /usr/share/doc/mingw-w64-common/copyright DESTINATION licences
            RENAME mingw-w64.txt COMPONENT portable)
    # The pages are those that the windows of this system made.
    install(DIRECTORY ${LAPVANE_HOST_BIN}/manual DESTINATION . COMPONENT portable)
endfunction()
