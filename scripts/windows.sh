#!/usr/bin/env bash
# Installs what is missing, cross-builds the Windows program and its packages, and tests them under
# Wine: the suite as Windows programs, the Excel engine against a server that stands in for Excel, the
# windows, the set-up program. The set-up program and the zip are then in build/windows. The first run
# builds the libraries from Debian's sources, in about five minutes.
#
#   scripts/windows.sh          what every push runs
#   scripts/windows.sh --full   every workbook and long loops here, too
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/steps.sh

full=OFF
case ${1:-} in
'') ;;
--full) full=ON ;;
*) sed -n 's/^#   //p' "$0" >&2 && exit 2 ;;
esac

step "Packages for Windows"
install_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_window_test[@]}" \
    "${packages_windows[@]}"

step "Libraries for Windows"
libraries=$(scripts/windows/libraries.sh)

step "Build for Windows"
cmake --preset linux >/dev/null # for the programs that its outputs are compared with
cmake --build --preset linux --target orrery-cli workbook_driver
# --fresh: nothing that CMake found in an earlier folder of libraries counts.
cmake --fresh --preset windows -DORRERY_WINDOWS_LIBRARIES="$libraries" \
    -DORRERY_FULL=$full >/dev/null
cmake --build --preset windows

step "clang for Windows"
scripts/clang.py build/windows _windows /excel/ /ui/wx/ # clang-tidy has seen the others

step "Set-up program and zip"
(cd build/windows && cpack)

step "Suite under Wine"
# New Wine folders: one that paints windows without a display, one of the tests that look at windows.
export ORRERY_WINEPREFIX=$PWD/build/windows/wine
scripts/windows/wine.sh --end
rm -rf "$ORRERY_WINEPREFIX" "$ORRERY_WINEPREFIX-windows"
trap 'scripts/windows/wine.sh --end; show_steps' EXIT
scripts/windows/wine.sh reg add 'HKCU\Software\Wine\Drivers' /v Graphics /d null /f
scripts/windows/wine.sh --end # programs read it when they start
ctest --preset windows -j2
