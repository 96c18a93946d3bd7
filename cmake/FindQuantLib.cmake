# Finds QuantLib, whose Debian package brings no CMake files, and defines the imported target
# QuantLib::QuantLib. Its headers include those of Boost.
find_package(Boost QUIET)

find_path(QUANTLIB_INCLUDE_DIR ql/version.hpp)
find_library(QUANTLIB_LIBRARY NAMES QuantLib)

if(QUANTLIB_INCLUDE_DIR AND EXISTS "${QUANTLIB_INCLUDE_DIR}/ql/version.hpp")
    file(STRINGS "${QUANTLIB_INCLUDE_DIR}/ql/version.hpp" _quantlib_version_line
        REGEX "^#define[ \t]+QL_VERSION[ \t]")
    string(REGEX REPLACE ".*\"([0-9.]+).*" "\\1" QuantLib_VERSION "${_quantlib_version_line}")
endif()

include(FindPackageHandleStandardArgs)
find_package_handle_standard_args(QuantLib
    REQUIRED_VARS QUANTLIB_LIBRARY QUANTLIB_INCLUDE_DIR Boost_INCLUDE_DIRS
    VERSION_VAR QuantLib_VERSION)
mark_as_advanced(QUANTLIB_INCLUDE_DIR QUANTLIB_LIBRARY)

if(QuantLib_FOUND AND NOT TARGET QuantLib::QuantLib)
    add_library(QuantLib::QuantLib UNKNOWN IMPORTED)
    set_target_properties(QuantLib::QuantLib PROPERTIES
        IMPORTED_LOCATION "${QUANTLIB_LIBRARY}"
        INTERFACE_INCLUDE_DIRECTORIES "${QUANTLIB_INCLUDE_DIR}"
        INTERFACE_SYSTEM_INCLUDE_DIRECTORIES "${QUANTLIB_INCLUDE_DIR}"
        INTERFACE_LINK_LIBRARIES Boost::headers)
endif()
