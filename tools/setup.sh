# Sourced by the scripts in the root folder.
# need_packages PACKAGE... installs the Debian packages of the list that are not installed yet.

need_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0

    local install=(apt-get install -y --no-install-recommends "${missing[@]}")
    if [ "$(id -u)" -eq 0 ]; then
        install_as_root env
    elif command -v sudo >/dev/null 2>&1 && { sudo -n true 2>/dev/null || [ -t 0 ]; }; then
        install_as_root sudo env
    else
        echo "Some packages are missing. As root, run: apt-get update && ${install[*]}" >&2
        exit 1
    fi
}

# Uses the variable install of its caller. A package list may be old or absent, so it is fetched first.
install_as_root() {
    echo "Installing: ${missing[*]}" >&2
    "$@" apt-get update -q >&2 && "$@" DEBIAN_FRONTEND=noninteractive "${install[@]}" >&2 || {
        echo "The installation failed; the command was: ${install[*]}" >&2
        exit 1
    }
}

build_packages=(g++ cmake ninja-build pkg-config qtbase5-dev libqt5svg5-dev libqwt-qt5-dev libqt5sql5-sqlite
    libqt5sql5-psql libpq-dev libquantlib0-dev fonts-dejavu-core qttools5-dev qttools5-dev-tools qttranslations5-l10n)
packaging_packages=(build-essential debhelper dpkg-dev git xz-utils)
abi_packages=(abigail-tools)

# configure_and_build SOURCE PRESET [TARGET...] prints nothing but what went wrong.
configure_and_build() {
    local source=$1 preset=$2
    shift 2
    if command -v ccache >/dev/null 2>&1; then
        export CMAKE_CXX_COMPILER_LAUNCHER=ccache
    fi
    # ninja configures again by itself when a build file changed.
    if [ ! -f "$source/build/$preset/build.ninja" ]; then
        (cd "$source" && cmake --preset "$preset") >&2 || exit 1
    fi
    ninja -C "$source/build/$preset" "$@" >&2 || exit 1
}
