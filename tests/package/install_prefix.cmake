# Installs the build tree BUILD into the empty folder PREFIX, component by component, and checks where everything
# has gone. The tree is moved once: whoever uses it in PREFIX proves that it may stand anywhere.
#   cmake -DBUILD=FOLDER -DPREFIX=FOLDER -DHEADERS=FOLDER/HEADER... -DHAS_DESK=BOOL -P install_prefix.cmake
set(first "${PREFIX}-first")
file(REMOVE_RECURSE "${first}" "${PREFIX}")

function(install component pattern)
    file(GLOB_RECURSE before RELATIVE "${first}" "${first}/*")
    execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${first}" --component ${component}
        OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
    file(GLOB_RECURSE files RELATIVE "${first}" "${first}/*")
    list(REMOVE_ITEM files ${before})
    if(NOT files)
        message(SEND_ERROR "nothing is in ${component}")
    endif()
    list(FILTER files EXCLUDE REGEX "${pattern}")
    if(files)
        message(SEND_ERROR "should not be in ${component}: ${files}")
    endif()
endfunction()

install(runtime "^lib/(.*/)?libplot2d[a-z0-9_]*\\.so\\.[0-9.]+$")
install(development "^(include/plot2d/.*\\.h|lib/(.*/)?libplot2d[a-z0-9_]*\\.so|lib/.*plot2d/.*\\.cmake|lib/.*plot2d\\.pc)$")
if(HAS_DESK)
    install(desk "^(bin/optiondesk|share/(applications|icons|man)/.*optiondesk[^/]*)$")
endif()

file(GLOB_RECURSE headers RELATIVE "${first}/include/plot2d" "${first}/include/plot2d/*")
list(SORT headers)
list(SORT HEADERS)
if(NOT headers STREQUAL HEADERS)
    message(SEND_ERROR "the headers are\n  ${headers}\nand not\n  ${HEADERS}")
endif()

# What is in no component would be missing from all packages.
file(GLOB_RECURSE by_component RELATIVE "${first}" "${first}/*")
execute_process(COMMAND ${CMAKE_COMMAND} --install "${BUILD}" --prefix "${first}"
    OUTPUT_QUIET COMMAND_ERROR_IS_FATAL ANY)
file(GLOB_RECURSE all RELATIVE "${first}" "${first}/*")
if(NOT all STREQUAL by_component)
    list(REMOVE_ITEM all ${by_component})
    message(SEND_ERROR "in no component: ${all}")
endif()

file(RENAME "${first}" "${PREFIX}")
