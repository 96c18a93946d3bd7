# The Debian packages of the tracked files, as they are now. They are made with Debian's own flags, so for one build tree.
set(packages "${CMAKE_CURRENT_BINARY_DIR}/packages")
set(scripts "${CMAKE_CURRENT_SOURCE_DIR}/debian")

add_test(NAME debian_make COMMAND "${PROJECT_SOURCE_DIR}/packaging/make-packages" "${packages}")
set_tests_properties(debian_make PROPERTIES FIXTURES_SETUP debian_packages TIMEOUT 3600 PROCESSORS 2)

add_test(NAME debian_lint COMMAND "${scripts}/check_lint.sh" "${packages}")
add_test(NAME debian_contents COMMAND "${scripts}/check_packages.sh" "${PROJECT_SOURCE_DIR}" "${packages}")
add_test(NAME debian_clean_root COMMAND "${scripts}/clean_root.sh" "${PROJECT_SOURCE_DIR}" "${packages}"
    "${CMAKE_CURRENT_BINARY_DIR}/clean_root")
set_tests_properties(debian_lint debian_contents debian_clean_root PROPERTIES
    FIXTURES_REQUIRED debian_packages TIMEOUT 1800 SKIP_RETURN_CODE 77)
