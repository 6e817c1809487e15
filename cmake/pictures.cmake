# The drawings of data/ become pictures here, in each theme and width at which the program shows them, so
# that it needs no reader of drawings. A build for another system takes the maker of a native one.
set(LAPVANE_HOST_BIN "" CACHE PATH "Folder with the native makepictures, for a build for another system")
if(CMAKE_CROSSCOMPILING)
    set(maker ${LAPVANE_HOST_BIN}/makepictures)
    if(NOT LAPVANE_HOST_BIN OR NOT EXISTS ${maker})
        message(FATAL_ERROR "LAPVANE_HOST_BIN must name the folder with the makepictures of a native build")
    endif()
else()
    find_package(Qt6 6.4 REQUIRED COMPONENTS Svg)
    add_executable(makepictures tools/pictures/main.cpp src/widgets/style/Colori.cpp)
    target_include_directories(makepictures PRIVATE src)
    target_link_libraries(makepictures PRIVATE Qt6::Gui Qt6::Svg)
    set(maker makepictures)
endif()

file(GLOB LAPVANE_DRAWINGS CONFIGURE_DEPENDS data/icons/*.svg data/splash.svg)
set(pictures ${LAPVANE_GENERATED}/pictures)
file(MAKE_DIRECTORY ${pictures})
# PNG is packed already; the first form of the file has no times in it, so that two builds are the same.
add_custom_command(
    OUTPUT ${LAPVANE_GENERATED}/pictures.cpp
    COMMAND ${maker} ${pictures} ${LAPVANE_DRAWINGS}
    COMMAND Qt6::rcc --name pictures --no-compress --format-version 1 -o ${LAPVANE_GENERATED}/pictures.cpp
            ${pictures}/pictures.qrc
    DEPENDS ${maker} ${LAPVANE_DRAWINGS}
    COMMENT "Pictures"
    VERBATIM)
set_source_files_properties(${LAPVANE_GENERATED}/pictures.cpp PROPERTIES SKIP_AUTOGEN ON
                            SKIP_PRECOMPILE_HEADERS ON)
