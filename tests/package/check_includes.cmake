# Fails when an include breaks the direction between the rooms below SOURCE (the folder that holds plot2d and
# host): plot2d sees of the host the public headers alone, host never sees plot2d, nothing sees apps.
#   cmake -DSOURCE=FOLDER -P check_includes.cmake
set(host_libraries "c_api|database|directory|basic_models|basic_views")
set(violations "")

function(check_folder folder forbidden)
    file(GLOB_RECURSE files "${SOURCE}/${folder}/*.h" "${SOURCE}/${folder}/*.cpp")
    if(NOT files)
        message(FATAL_ERROR "no sources in ${SOURCE}/${folder}")
    endif()
    foreach(file IN LISTS files)
        file(STRINGS "${file}" includes REGEX "^[ \t]*#[ \t]*include")
        foreach(include IN LISTS includes)
            string(REGEX REPLACE ".*[<\"]([^>\"]*)[>\"].*" "\\1" header "${include}")
            if(header MATCHES "${forbidden}")
                list(APPEND violations "${file} includes ${header}")
            endif()
        endforeach()
    endforeach()
    set(violations "${violations}" PARENT_SCOPE)
endfunction()

check_folder(plot2d "^(\\.\\.|host/|apps/|optiondesk/)|^(${host_libraries})/.*(_p\\.h$|/.*/)")
check_folder(host "^(plot2d/|.*pricebased2dplot|.*plot2dcommon|apps/|optiondesk/|qwt)")

if(violations)
    list(JOIN violations "\n  " text)
    message(FATAL_ERROR "Includes against the direction of the rooms:\n  ${text}")
endif()
