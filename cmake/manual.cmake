# The manual: a tour in each language takes the pictures, then the chapters become pages in manual/
# beside the program, which opens them. Whatever changes in the program plays the tours again, so that
# no picture is older than the windows that it shows.
find_path(LAPVANE_CMARK_INCLUDE cmark-gfm-core-extensions.h)
find_library(LAPVANE_CMARK cmark-gfm)
find_library(LAPVANE_CMARK_EXTENSIONS cmark-gfm-extensions)
if(NOT LAPVANE_CMARK_INCLUDE OR NOT LAPVANE_CMARK OR NOT LAPVANE_CMARK_EXTENSIONS)
    message(STATUS "No target \"manual\": cmark-gfm is not installed")
    return()
endif()

file(GLOB LAPVANE_MANUAL_SOURCES CONFIGURE_DEPENDS tools/manual/*.cpp tools/manual/*.h)
add_executable(makemanual ${LAPVANE_MANUAL_SOURCES})
target_include_directories(makemanual SYSTEM PRIVATE ${LAPVANE_CMARK_INCLUDE})
target_link_libraries(makemanual PRIVATE lapvane_texttable lapvane_instrument_core
                      ${LAPVANE_CMARK_EXTENSIONS} ${LAPVANE_CMARK})

set(LAPVANE_TOURS ${CMAKE_BINARY_DIR}/tours)
foreach(language it en)
    add_custom_command(
        OUTPUT ${LAPVANE_TOURS}/${language}.stamp
        COMMAND ${CMAKE_COMMAND} -DTOUR=$<TARGET_FILE:tour> -DOUT=${LAPVANE_TOURS}/${language}
                -DLANGUAGE=${language} -P ${CMAKE_SOURCE_DIR}/cmake/playtour.cmake
        COMMAND ${CMAKE_COMMAND} -E touch ${LAPVANE_TOURS}/${language}.stamp
        DEPENDS tour lapvane-instrument cmake/playtour.cmake ${LAPVANE_BIN}/LANGUAGES.DAT ${CMAKE_BINARY_DIR}/data.stamp
        COMMENT "Tour for the manual (${language})"
        VERBATIM)
endforeach()

file(GLOB_RECURSE LAPVANE_MANUAL_CHAPTERS CONFIGURE_DEPENDS docs/manual/*)
add_custom_command(
    OUTPUT ${LAPVANE_BIN}/manual/index.html
    COMMAND makemanual ${CMAKE_SOURCE_DIR} ${LAPVANE_TOURS}/it ${LAPVANE_TOURS}/en
            ${LAPVANE_BIN}/manual
    DEPENDS makemanual ${LAPVANE_TOURS}/it.stamp ${LAPVANE_TOURS}/en.stamp data/testi.tsv
            ${LAPVANE_MANUAL_CHAPTERS}
    COMMENT "Manual"
    VERBATIM)
add_custom_target(manual ALL DEPENDS ${LAPVANE_BIN}/manual/index.html)
