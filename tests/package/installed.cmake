# What others make of an installation of this build tree into an empty prefix.
set(prefix "${CMAKE_CURRENT_BINARY_DIR}/prefix")

# Its programs run under the sanitizers where the libraries do.
set(flags "")
if(PLOT2D_SANITIZERS)
    set(flags "-fsanitize=${PLOT2D_SANITIZERS}" -fno-omit-frame-pointer -fno-sanitize-recover=all)
endif()
list(JOIN flags " " flags_text)

add_test(NAME package_install
    COMMAND ${CMAKE_COMMAND} "-DBUILD=${PROJECT_BINARY_DIR}" "-DPREFIX=${prefix}" "-DHEADERS=${headers}"
        -DHAS_DESK=${PLOT2D_BUILD_DESK} -P "${CMAKE_CURRENT_SOURCE_DIR}/install_prefix.cmake")
set_tests_properties(package_install PROPERTIES FIXTURES_SETUP package_prefix)

# package_project(name folder ARGUMENT...) builds the project in the folder and runs its program.
function(package_project name folder)
    set(arguments -G "${CMAKE_GENERATOR}" "-DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}"
        "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}" ${ARGN})
    add_test(NAME package_${name}
        COMMAND ${CMAKE_COMMAND} "-DSOURCE=${CMAKE_CURRENT_SOURCE_DIR}/${folder}"
            "-DBINARY=${CMAKE_CURRENT_BINARY_DIR}/${name}" "-DARGUMENTS=${arguments}"
            -P "${CMAKE_CURRENT_SOURCE_DIR}/build_project.cmake")
endfunction()

# A folder of the last time would find the package that it remembers.
set(installed "--fresh" "-DCMAKE_PREFIX_PATH=${prefix}" "-DCMAKE_CXX_FLAGS=${flags_text}" ${same_qwt})
package_project(find_package consumer ${installed})
package_project(headers headers ${installed})
add_test(NAME package_pkgconfig
    COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/build_by_pkgconfig.sh" "${prefix}"
        "${CMAKE_CURRENT_SOURCE_DIR}/consumer/main.cpp" "${CMAKE_CURRENT_BINARY_DIR}/by_pkgconfig"
        "${CMAKE_CXX_COMPILER}" ${flags})
set(users find_package headers pkgconfig)
if(PLOT2D_BUILD_DESK)
    add_test(NAME package_desk
        COMMAND "${CMAKE_CURRENT_SOURCE_DIR}/run_desk.sh" "${prefix}" "${CMAKE_CURRENT_BINARY_DIR}/desk.png")
    list(APPEND users desk)
endif()
list(TRANSFORM users PREPEND package_)
set_tests_properties(${users} PROPERTIES FIXTURES_REQUIRED package_prefix)

# The libraries are compiled for this one project, hence only once, and without instruments: one build tree is enough.
if(NOT flags)
    package_project(subdirectory subdirectory
        "-DPLOT2D_SOURCE=${PROJECT_SOURCE_DIR}" "-DPLOT2D_QT_VERSION=${PLOT2D_QT_VERSION}" ${same_qwt})
    list(APPEND users package_subdirectory)
    set_tests_properties(package_subdirectory PROPERTIES TIMEOUT 900)

    if(PLOT2D_QT_VERSION EQUAL 5)
        package_project(other_qt other_qt "-DPLOT2D_SOURCE=${PROJECT_SOURCE_DIR}")
        set_tests_properties(package_other_qt PROPERTIES SKIP_REGULAR_EXPRESSION "SKIPPED: " TIMEOUT 900)
    endif()
endif()

set_tests_properties(${users} PROPERTIES ENVIRONMENT "${test_environment}")
