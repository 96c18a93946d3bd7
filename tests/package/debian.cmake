# The Debian packages of the tracked files, as they are now. They are made with Debian's own flags, so for one build tree.
set(packages "${CMAKE_CURRENT_BINARY_DIR}/packages")
set(scripts "${CMAKE_CURRENT_SOURCE_DIR}/debian")
set(with_tools "${CMAKE_CURRENT_SOURCE_DIR}/with_tools.sh")

add_test(NAME debian_make
    COMMAND "${with_tools}" "dh dpkg-buildpackage git" "${PROJECT_SOURCE_DIR}/packaging/make-packages" "${packages}")
add_test(NAME debian_lint COMMAND "${with_tools}" "dh dpkg-buildpackage git lintian" "${scripts}/check_lint.sh" "${packages}")
add_test(NAME debian_contents COMMAND "${with_tools}" "dh dpkg-buildpackage git"
    "${scripts}/check_packages.sh" "${PROJECT_SOURCE_DIR}" "${packages}")
add_test(NAME debian_clean_root COMMAND "${with_tools}" "dh dpkg-buildpackage git debootstrap"
    "${scripts}/clean_root.sh" "${PROJECT_SOURCE_DIR}" "${packages}" "${CMAKE_CURRENT_BINARY_DIR}/clean_root")
# Nothing looks at the packages for debuggers, which take a third of the time.
set_tests_properties(debian_make PROPERTIES FIXTURES_SETUP debian_packages TIMEOUT 3600 PROCESSORS 2 SKIP_RETURN_CODE 77
    ENVIRONMENT DEB_BUILD_OPTIONS=noautodbgsym)
set_tests_properties(debian_lint debian_contents debian_clean_root PROPERTIES
    FIXTURES_REQUIRED debian_packages TIMEOUT 1800 SKIP_RETURN_CODE 77)
