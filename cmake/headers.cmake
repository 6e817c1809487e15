# The libraries that are nothing but headers. For another system they come from the machine that builds,
# without what lies beside them there: its /usr/include is not for that system.
if(NOT CMAKE_CROSSCOMPILING)
    find_package(CLI11 REQUIRED)
    find_package(nlohmann_json REQUIRED)
    return()
endif()
foreach(target IN ITEMS CLI11::CLI11 nlohmann_json::nlohmann_json)
    string(REGEX REPLACE "11::.*|_json::.*" "" folder ${target})
    find_path(LAPVANE_HEADERS_${folder} ${folder} PATHS /usr/include /usr/local/include REQUIRED
              NO_DEFAULT_PATH NO_CMAKE_FIND_ROOT_PATH)
    file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/headers)
    file(CREATE_LINK ${LAPVANE_HEADERS_${folder}}/${folder} ${CMAKE_BINARY_DIR}/headers/${folder} SYMBOLIC)
    add_library(${target} INTERFACE IMPORTED)
    set_target_properties(${target} PROPERTIES
        INTERFACE_INCLUDE_DIRECTORIES ${CMAKE_BINARY_DIR}/headers)
endforeach()
