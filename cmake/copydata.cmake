# Lays the delivered data beside the program. What the user may have changed is not written over.
file(COPY ${FROM}/sensors DESTINATION ${TO})
file(COPY ${FROM}/tracks DESTINATION ${TO})
foreach(name RecentFiles.ini Esempio.pro)
    if(NOT EXISTS ${TO}/${name})
        file(COPY ${FROM}/${name} DESTINATION ${TO})
    endif()
endforeach()
file(MAKE_DIRECTORY ${TO}/ports)
