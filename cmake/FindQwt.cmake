# Finds Qwt for Qt 5 and defines the imported target Qwt::Qwt.
#
# Debian's package describes itself to pkg-config as Qt5Qwt6, but that file requires modules (Svg,
# OpenGL) whose development files the package does not bring; so only its directories and its version
# are taken from there.
find_package(PkgConfig QUIET)
if(PkgConfig_FOUND)
    foreach(variable IN ITEMS includedir libdir)
        execute_process(
            COMMAND ${PKG_CONFIG_EXECUTABLE} --variable=${variable} Qt5Qwt6
            OUTPUT_VARIABLE _qwt_${variable} OUTPUT_STRIP_TRAILING_WHITESPACE ERROR_QUIET)
    endforeach()
endif()

find_path(QWT_INCLUDE_DIR qwt_plot.h
    HINTS ${_qwt_includedir}
    PATH_SUFFIXES qwt qwt-qt5 qwt6)
find_library(QWT_LIBRARY NAMES qwt-qt5 qwt6-qt5 qwt HINTS ${_qwt_libdir})

if(QWT_INCLUDE_DIR AND EXISTS "${QWT_INCLUDE_DIR}/qwt_global.h")
    file(STRINGS "${QWT_INCLUDE_DIR}/qwt_global.h" _qwt_version_line
        REGEX "^#define[ \t]+QWT_VERSION_STR")
    string(REGEX REPLACE ".*\"([0-9.]+)\".*" "\\1" Qwt_VERSION "${_qwt_version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(Qwt
    REQUIRED_VARS QWT_LIBRARY QWT_INCLUDE_DIR
    VERSION_VAR Qwt_VERSION)
mark_as_advanced(QWT_INCLUDE_DIR QWT_LIBRARY)

if(Qwt_FOUND AND NOT TARGET Qwt::Qwt)
    add_library(Qwt::Qwt UNKNOWN IMPORTED)
    set_target_properties(Qwt::Qwt PROPERTIES
        IMPORTED_LOCATION "${QWT_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${QWT_INCLUDE_DIR}"
        INTERFACE_COMPILE_DEFINITIONS QWT_DLL
        INTERFACE_LINK_LIBRARIES "Qt5::Widgets")
endif()
