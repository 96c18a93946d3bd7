# The binary interface of the installed libraries against that of the last release.
set(with_abidiff "${CMAKE_CURRENT_SOURCE_DIR}/with_tools.sh" "abidw abidiff")
add_test(NAME package_abi
    COMMAND ${with_abidiff} "${PROJECT_SOURCE_DIR}/tools/check-abi" --installed "${prefix}")

# The library as a release would have it that had one function more.
file(CONFIGURE OUTPUT planted.cpp CONTENT
"#include <plot2d/plot2dexport.h>
namespace Plot2dCommon { PLOT2D_EXPORT int planted(int value); }
int Plot2dCommon::planted(int value) { return value + 1; }
")
add_library(package_longer_interface SHARED $<TARGET_OBJECTS:plot2d> "${CMAKE_CURRENT_BINARY_DIR}/planted.cpp")
set_target_properties(package_longer_interface PROPERTIES AUTOMOC OFF OUTPUT_NAME plot2d
    SOVERSION ${PROJECT_VERSION_MAJOR} LIBRARY_OUTPUT_DIRECTORY "${CMAKE_CURRENT_BINARY_DIR}/longer_interface")
target_link_libraries(package_longer_interface PRIVATE plot2d::plot2d)

add_test(NAME package_abi_breaks
    COMMAND ${with_abidiff} "${CMAKE_CURRENT_SOURCE_DIR}/check_abi_breaks.sh" "${PROJECT_SOURCE_DIR}"
        "${CMAKE_CURRENT_BINARY_DIR}/abi_breaks" "${CMAKE_CXX_COMPILER}" "${prefix}"
        $<TARGET_FILE:package_longer_interface>)
set_tests_properties(package_abi package_abi_breaks PROPERTIES
    FIXTURES_REQUIRED package_prefix TIMEOUT 600 SKIP_RETURN_CODE 77)
