# The library on another host, in a build tree of its own: a test for each class and for each operation of the host,
# and the random driver. All tests of the library run there by ./test.sh otherhost.
#
# Once is enough for what takes minutes to compile, and the sanitizers watch the same sources of the library already:
# hence in the debug build alone.
if(NOT has_reference_host OR NOT CMAKE_BUILD_TYPE STREQUAL "Debug" OR PLOT2D_SANITIZERS OR PLOT2D_COVERAGE)
    return()
endif()

set(programs
    tst_changesmeanwhile tst_fieldtypes tst_oddstrikes
    tst_futureexpiry tst_securitycolumns tst_securitylookup tst_securityquote
    tst_legendstorage tst_plotpoints tst_pricebased2dplotlegend tst_pricebased2dplotpanner
    tst_pricebased2dplotpicker tst_pricebased2dplotpointmanager tst_wheelzoom
    tst_plotcanvas tst_pricebased2dplot_setup tst_pricebased2dplotconverter tst_pricebased2dplotcurve_plot
    tst_scaledraw_labels tst_scaleengine tst_scaleengine_kept)
set(arguments -G "${CMAKE_GENERATOR}" "-DPLOT2D_HOST_DIR=${PROJECT_SOURCE_DIR}/tests/otherhost"
    -DCMAKE_BUILD_TYPE=Debug -DCMAKE_CXX_FLAGS_DEBUG=-O0 "-DPLOT2D_WARNINGS_AS_ERRORS=${PLOT2D_WARNINGS_AS_ERRORS}"
    "-DCMAKE_CXX_COMPILER=${CMAKE_CXX_COMPILER}" "-DCMAKE_CXX_COMPILER_LAUNCHER=${CMAKE_CXX_COMPILER_LAUNCHER}"
    "-DPLOT2D_QT_VERSION=${PLOT2D_QT_VERSION}" ${same_qwt})
add_test(NAME package_otherhost
    COMMAND ${CMAKE_COMMAND} "-DSOURCE=${PROJECT_SOURCE_DIR}" "-DBINARY=${CMAKE_CURRENT_BINARY_DIR}/otherhost"
        "-DARGUMENTS=${arguments}" "-DPROGRAMS=${programs}" -P "${CMAKE_CURRENT_SOURCE_DIR}/run_on_host.cmake")
set_tests_properties(package_otherhost PROPERTIES
    PROCESSORS 2 TIMEOUT 1500 ENVIRONMENT "QT_QPA_PLATFORM=offscreen;LC_ALL=C.UTF-8")
