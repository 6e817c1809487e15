# Plays one tour for the manual: with a quick clock, and once more with the real one where that did
# not come through, as it may on a machine that is busy with other things.
foreach(pace quick "")
    file(REMOVE_RECURSE ${OUT})
    file(MAKE_DIRECTORY ${OUT})
    execute_process(COMMAND ${CMAKE_COMMAND} -E env QT_QPA_PLATFORM=offscreen ${TOUR} ${OUT} ${LANGUAGE} ${pace}
                    RESULT_VARIABLE result OUTPUT_FILE ${OUT}.log)
    if(result EQUAL 0)
        return()
    endif()
    message(STATUS "The ${pace} tour (${LANGUAGE}) ended with ${result}")
endforeach()
message(FATAL_ERROR "The tour does not come through: see ${OUT}.log")
