#!/usr/bin/env bash
# Installs what is missing, builds the programs, makes a calendar from a shipped template, and opens
# the window where there is a display.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

install_packages "${packages_build[@]}"
cmake --preset demo >/dev/null
cmake --build --preset demo

mkdir -p output
build/demo/src/cli/orrery-cli generate data/template/Desk.xls 2027 --output-folder output >/dev/null
window=build/demo/src/ui/wx/orrery
echo
echo "Your calendar: $PWD/output/2027Desk.xls"
echo "The window:    $PWD/$window"
if [ -n "${DISPLAY:-}${WAYLAND_DISPLAY:-}" ]; then
    setsid "$window" >/dev/null 2>&1 &
    echo "It is being opened."
else
    echo "There is no display here; start it in a desktop session."
fi
