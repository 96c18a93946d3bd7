#!/bin/sh
# Runs as root in a bare Debian that has the packages in /test. Installs exactly what they depend on, then them alone,
# so that a missing dependency shows, and in the end no file may differ from before.
set -eu
cd /test

# What dpkg and the linker write anew at each installation, and the folders of the test.
list_files() {
    find / -xdev \( -path /proc -o -path /sys -o -path /dev -o -path /tmp -o -path /run -o -path /test -o -path /var/log \
        -o -path '/var/lib/dpkg/status*' -o -path '/var/lib/dpkg/lock*' -o -path /var/lib/dpkg/triggers \
        -o -path /var/cache/ldconfig -o -path /var/lib/apt -o -path /var/cache/apt \) -prune \
        -o -type f -exec sha256sum {} + -o -printf '%y %p %l\n' | sort
}

# The mirror may fail later than when it was first asked.
give_up() {
    cat "$1"
    ! grep -qE 'Failed to fetch|Temporary failure' "$1" || exit 77
    exit 1
}

# install_dependencies FILE|PACKAGE... installs what the packages in files depend on, but for each other, and packages.
install_dependencies() {
    wanted=''
    for name in "$@"; do
        case $name in
        ./*.deb) more=$(dpkg-deb -f "$name" Depends | tr ',' '\n' | grep -v libplot2d0 | paste -sd ',') ;;
        *) more=$name ;;
        esac
        wanted="$wanted${wanted:+, }$more"
    done
    apt-get -q -o Dir::Cache::archives=/test/archives -o APT::Keep-Downloaded-Packages=true \
        -o Acquire::Retries=3 -o APT::Sandbox::User=root -o Dpkg::Use-Pty=0 -o DPkg::Options::=--force-unsafe-io \
        satisfy -y --no-install-recommends "$wanted" > /test/apt.log 2>&1 || give_up /test/apt.log
}

# A user without rights or settings.
as_user() {
    setpriv --reuid=nobody --regid=nogroup --clear-groups env HOME=/test/home QT_QPA_PLATFORM=offscreen "$@"
}

purge_without_trace() {
    dpkg --purge "$@" > /dev/null
    list_files > after
    if ! diff before after; then
        echo "Removing $* leaves these differences." >&2
        exit 1
    fi
    echo "$* are gone without a trace."
}

apt-get -q -o APT::Sandbox::User=root -o Acquire::Retries=3 update > apt.log 2>&1 || give_up apt.log
mkdir home
chown nobody:nogroup home

install_dependencies ./libplot2d0_*.deb ./optiondesk_*.deb
list_files > before
dpkg --install ./libplot2d0_*.deb ./optiondesk_*.deb
as_user optiondesk --version
as_user optiondesk --no-settings --picture home/desk.png
# A window of one colour takes less than this.
[ "$(stat -c %s home/desk.png)" -gt 20000 ]
samples=/usr/share/doc/optiondesk/examples
as_user optiondesk --no-settings --chain "$(find "$samples" -name 'amber*')" --database home/desk.sqlite --export home/smile.csv
[ "$(wc -l < home/smile.csv)" -gt 10 ]
[ -s home/desk.sqlite ]
# No server is there, but the driver that asks for it.
if as_user optiondesk --no-settings --database postgresql://nobody@127.0.0.1:1/chains --picture home/none.png > server.log 2>&1; then
    echo "A server that is not there answers." >&2
    exit 1
fi
cat server.log
grep -qi 'refused' server.log
purge_without_trace optiondesk libplot2d0

install_dependencies ./libplot2d0_*.deb ./libplot2d-dev_*.deb g++ make cmake pkgconf
list_files > before
dpkg --install ./libplot2d0_*.deb ./libplot2d-dev_*.deb
as_user cmake -S consumer -B home/consumer > cmake.log 2>&1 || { cat cmake.log; exit 1; }
as_user cmake --build home/consumer
as_user home/consumer/consumer
# The flags are words of their own.
# shellcheck disable=SC2046
as_user g++ -std=c++17 -fPIC consumer/main.cpp -o home/by_pkgconfig $(pkg-config --cflags --libs plot2d)
as_user home/by_pkgconfig
purge_without_trace libplot2d-dev libplot2d0
