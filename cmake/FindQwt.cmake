# Finds the Qwt that is built with Qt PLOT2D_QT_VERSION (5 or 6) and defines the imported target Qwt::Qwt.
# QWT_INCLUDE_DIR (the folder of qwt_plot.h) and QWT_LIBRARY name one that stands in no usual place.
#
# Debian's package describes itself to pkg-config as Qt5Qwt6, but that file requires modules (Svg,
# OpenGL) whose development files the package does not bring; so only its directories and its version
# are taken from there.
set(_qwt_qt "qt${PLOT2D_QT_VERSION}")
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    foreach(variable IN ITEMS includedir libdir)
        execute_process(
            COMMAND ${PKG_CONFIG_EXECUTABLE} --variable=${variable} Qt${PLOT2D_QT_VERSION}Qwt6
            OUTPUT_VARIABLE _qwt_${variable} OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endforeach()
endif()

find_library(QWT_LIBRARY NAMES qwt-${_qwt_qt} qwt6-${_qwt_qt} qwt HINTS ${_qwt_libdir})
# Headers without the name of a Qt may be those of the other Qwt: the ones beside the library come first.
cmake_path(GET QWT_LIBRARY PARENT_PATH _qwt_beside)
find_path(QWT_INCLUDE_DIR qwt_plot.h
    HINTS ${_qwt_includedir} "${_qwt_beside}/../include" "${_qwt_beside}/../../include"
    PATH_SUFFIXES qwt-${_qwt_qt} qwt6-${_qwt_qt} qwt qwt6)

if(QWT_INCLUDE_DIR AND EXISTS "${QWT_INCLUDE_DIR}/qwt_global.h")
    file(STRINGS "${QWT_INCLUDE_DIR}/qwt_global.h" _qwt_version_line
        REGEX "^#define[ \t]+QWT_VERSION_STR")
    string(REGEX REPLACE ".*\"([0-9.]+)\".*" "\\1" Qwt_VERSION "${_qwt_version_line}")
endif()

# A program with two Qts in it crashes at its start. A shared library names the Qt that it needs; an archive
# does not.
set(Qwt_FITS_QT TRUE)
set(_qwt_reason "A Qwt of Qt ${PLOT2D_QT_VERSION} is needed. CMAKE_PREFIX_PATH, or QWT_LIBRARY and QWT_INCLUDE_DIR, may name one.")
if(QWT_LIBRARY AND EXISTS "${QWT_LIBRARY}")
    file(STRINGS "${QWT_LIBRARY}" _qwt_needs REGEX "libQt[0-9]Widgets\\.so" LIMIT_COUNT 1)
    string(REGEX REPLACE ".*libQt([0-9])Widgets.*" "\\1" _qwt_needs "${_qwt_needs}")
    if(_qwt_needs AND NOT _qwt_needs STREQUAL PLOT2D_QT_VERSION)
        set(Qwt_FITS_QT FALSE)
        string(PREPEND _qwt_reason "${QWT_LIBRARY} is a Qwt of Qt ${_qwt_needs}. ")
    endif()
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt
    REQUIRED_VARS QWT_LIBRARY QWT_INCLUDE_DIR Qwt_FITS_QT
    VERSION_VAR Qwt_VERSION
    REASON_FAILURE_MESSAGE "${_qwt_reason}")
mark_as_advanced(QWT_INCLUDE_DIR QWT_LIBRARY)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION "${QWT_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${QWT_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS QWT_DLL
        INTERFACE_LINK_LIBRARIES "Qt${PLOT2D_QT_VERSION}::Widgets")
endif()
