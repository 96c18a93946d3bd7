# Where the parts of the library go, in three components: runtime (the shared libraries), development
# (headers, links, descriptions for CMake and pkg-config) and desk (the application with all of its own).
set(PLOT2D_INSTALL_INCLUDEDIR "${CMAKE_INSTALL_INCLUDEDIR}/plot2d")
set(PLOT2D_INSTALL_CMAKEDIR "${CMAKE_INSTALL_LIBDIR}/cmake/plot2d")

# plot2d_public_headers(target result): the headers among a target's sources that others may include, as full
# paths.
function(plot2d_public_headers target result)
    get_target_property(folder ${target} SOURCE_DIR)
    get_target_property(headers ${target} SOURCES)
    list(FILTER headers INCLUDE REGEX "^[^/$]*\\.h$")
    list(FILTER headers EXCLUDE REGEX "_p\\.h$")
    list(TRANSFORM headers PREPEND "${folder}/")
    set(${result} ${headers} PARENT_SCOPE)
endfunction()

# plot2d_install_library(target folder): the shared library, which finds its neighbours wherever the tree stands,
# and its public headers, included as <folder/header.h>.
function(plot2d_install_library target folder)
    plot2d_public_headers(${target} headers)
    install(FILES ${headers} DESTINATION "${PLOT2D_INSTALL_INCLUDEDIR}/${folder}" COMPONENT development)
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN")
    install(TARGETS ${target} EXPORT plot2d-targets
        LIBRARY DESTINATION "${CMAKE_INSTALL_LIBDIR}" COMPONENT runtime NAMELINK_COMPONENT development
        INCLUDES DESTINATION "${PLOT2D_INSTALL_INCLUDEDIR}")
endfunction()

# plot2d_install_program(target component): finds the libraries by the way from its folder to theirs.
function(plot2d_install_program target component)
    file(RELATIVE_PATH to_libraries "${CMAKE_INSTALL_FULL_BINDIR}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    set_target_properties(${target} PROPERTIES INSTALL_RPATH "$ORIGIN/${to_libraries}")
    install(TARGETS ${target} RUNTIME DESTINATION "${CMAKE_INSTALL_BINDIR}" COMPONENT ${component})
endfunction()

# plot2d_install_descriptions(): the CMake package and the file of pkg-config, once all libraries are there.
function(plot2d_install_descriptions)
    include(CMakePackageConfigHelpers)
    set(made "${CMAKE_CURRENT_BINARY_DIR}/package")
    configure_package_config_file(cmake/plot2d-config.cmake.in "${made}/plot2d-config.cmake"
        INSTALL_DESTINATION "${PLOT2D_INSTALL_CMAKEDIR}")
    # As the number in the libraries' names: the first one changes when programs must be built anew.
    write_basic_package_version_file("${made}/plot2d-config-version.cmake" COMPATIBILITY SameMajorVersion)
    install(FILES cmake/FindQwt.cmake "${made}/plot2d-config.cmake" "${made}/plot2d-config-version.cmake"
        DESTINATION "${PLOT2D_INSTALL_CMAKEDIR}" COMPONENT development)
    install(EXPORT plot2d-targets NAMESPACE plot2d::
        DESTINATION "${PLOT2D_INSTALL_CMAKEDIR}" COMPONENT development)

    set(folder "${CMAKE_INSTALL_FULL_LIBDIR}/pkgconfig")
    file(RELATIVE_PATH to_prefix "${folder}" "${CMAKE_INSTALL_PREFIX}")
    string(REGEX REPLACE "/$" "" to_prefix "${to_prefix}")
    file(RELATIVE_PATH libdir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_LIBDIR}")
    file(RELATIVE_PATH includedir "${CMAKE_INSTALL_PREFIX}" "${CMAKE_INSTALL_FULL_INCLUDEDIR}")
    set(libraries -lplot2d)
    get_target_property(host plot2d_host INTERFACE_LINK_LIBRARIES)
    foreach(library IN LISTS host)
        get_target_property(name ${library} OUTPUT_NAME)
        list(APPEND libraries "-l${name}")
    endforeach()
    # By its directories, as Qwt's own description asks for more than the libraries need.
    cmake_path(GET QWT_LIBRARY PARENT_PATH qwt_folder)
    cmake_path(GET QWT_LIBRARY STEM LAST_ONLY qwt_name)
    string(REGEX REPLACE "^lib" "-l" qwt_name "${qwt_name}")
    list(APPEND libraries "-L${qwt_folder}" "${qwt_name}")
    list(JOIN libraries " " libraries)
    configure_file(cmake/plot2d.pc.in "${made}/plot2d.pc" @ONLY)
    install(FILES "${made}/plot2d.pc" DESTINATION "${CMAKE_INSTALL_LIBDIR}/pkgconfig" COMPONENT development)
endfunction()
