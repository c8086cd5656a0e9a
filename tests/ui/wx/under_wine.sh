#!/usr/bin/env bash
# Runs a Windows program with window tests: under_wine.sh PROGRAM [ARGUMENT...]
#
# The program gets a private Windows on a private display, see with_display.sh. Windows draws the
# frames itself. Beside the program are opener.exe and help_viewer.dll, which "open" documents,
# folders, addresses and the help by writing them to the file $ORRERY_OPENED. ORRERY_DPI: resolution
# of the screen, 96 by default.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
wine=$here/../../../scripts/windows/wine.sh

if [ -z "${ORRERY_OPENED:-}" ]; then
    # Kept between runs, but only for these tests: everything in it is ended at the end.
    export ORRERY_WINEPREFIX=${ORRERY_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/orrery/wine}-windows
    exec "$here/with_display.sh" "$0" "$@"
fi

"$wine" --end # left by an earlier run on another display
trap '"$wine" --end' EXIT

folder=$(cd "$(dirname "$1")" && pwd)
escaped=Z:${folder//\//\\\\}
command="\"\\\"$escaped\\\\opener.exe\\\" \\\"%1\\\"\""
settings=$(dirname "$ORRERY_OPENED")/settings.reg
{
    echo REGEDIT4
    echo '[HKEY_CURRENT_USER\Software\Wine\Explorer]'
    echo '"Desktop"="Orrery"'
    echo '[HKEY_CURRENT_USER\Software\Wine\Explorer\Desktops]'
    echo '"Orrery"="1920x1200"'
    echo '[HKEY_CURRENT_USER\Control Panel\Desktop]'
    printf '"LogPixels"=dword:%08x\n' "${ORRERY_DPI:-96}"
    for extension in xls xlsx chm; do
        echo "[HKEY_CLASSES_ROOT\\.$extension]"
        echo '@="OrreryTests.Document"'
    done
    for kind in OrreryTests.Document Folder Directory mailto http https; do
        echo "[HKEY_CLASSES_ROOT\\$kind]"
        echo '"URL Protocol"=""'
        echo "[HKEY_CLASSES_ROOT\\$kind\\shell\\open\\command]"
        echo "@=$command"
        echo "[-HKEY_CLASSES_ROOT\\$kind\\shell\\open\\ddeexec]"
    done
    echo '[HKEY_CLASSES_ROOT\CLSID\{ADB880A6-D8FF-11CF-9377-00AA003B7A11}\InprocServer32]'
    echo "@=\"$escaped\\\\help_viewer.dll\""
} >"$settings"
"$wine" regedit /S "Z:$settings"
"$wine" --end # so that the next program reads the settings
export ORRERY_OPENED=Z:$ORRERY_OPENED
status=0
"$wine" "$@" || status=$?
exit "$status"
