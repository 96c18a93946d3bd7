#!/bin/bash
# Sets the machine up if need be, builds the option desk and starts it. Arguments are the desk's.
# Without a display the desk's window is drawn into a picture instead (--picture FILE chooses which, --export FILE draws the plot alone).
set -u
root=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
. "$root/tools/setup.sh"

need_packages "${build_packages[@]}"
configure_and_build "$root" release optiondesk

desk=$root/build/release/apps/optiondesk/optiondesk
if [ -z "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    export QT_QPA_PLATFORM=${QT_QPA_PLATFORM:-offscreen}
    case " $* " in
    *" --picture"* | *" --export"* | *" --help "* | *" -h "* | *" --version "* | *" -v "*) ;;
    *) set -- "$@" --picture "$PWD/optiondesk.png" ;;
    esac
fi
exec "$desk" "$@"
