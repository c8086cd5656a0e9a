#!/usr/bin/env bash
# Runs a Windows program under Wine, quietly, in a Wine folder of the tests' own, which the first use
# sets up. Several programs may run at once.
#   scripts/windows/wine.sh PROGRAM [ARGUMENT...]    the exit code is the program's
#   scripts/windows/wine.sh --end                    ends all that runs in that folder
#   scripts/windows/wine.sh --folder                 prints the folder
# ORRERY_WINEPREFIX: the folder; by default one in the user's cache folder.
# ORRERY_WINE_LOCALE: a UTF-8 locale whose language gives the code page; by default English, 1252.
set -euo pipefail

export WINEPREFIX=${ORRERY_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/orrery/wine}
export WINEARCH=win64 WINEDEBUG=${WINEDEBUG:--all}
export WINEDLLOVERRIDES='mscoree,mshtml,winemenubuilder.exe=' # nothing to download, no menus
unset WAYLAND_DISPLAY
export LC_ALL=${ORRERY_WINE_LOCALE:-C.UTF-8}

ready=$WINEPREFIX/orrery-ready
log=$WINEPREFIX.log # what Wine itself says when it starts

case $* in
--end)
    [ ! -d "$WINEPREFIX" ] || { wineserver --kill && wineserver --wait; } || true # where nothing runs
    exit 0
    ;;
--folder)
    echo "$WINEPREFIX"
    exit 0
    ;;
esac

# Wine's services outlive the last program by a minute, so that the next one need not wait for them. If
# several programs start at once, one of them starts the services, which keep none of its files open.
start_services() {
    (
        flock 9
        wineserver --kill=0 && exit # they run
        wineserver --persistent=60 9>&-
        wine cmd /c exit 9>&-
    ) 9>"$WINEPREFIX/orrery-lock" </dev/null >>"$log" 2>&1
}

# Wine may fail for a moment, for want of disk space or in its own folder of sockets (where it asks to
# be run again). What a failed attempt leaves is removed: Wine would take it for a finished set-up.
set_up() {
    : >"$log"
    for pause in 3 10 0; do
        start_services && wine winecfg -v win10 </dev/null >>"$log" 2>&1 && touch "$ready" && return
        { echo "wine.sh: the set-up failed. The disk:" && df -h "$WINEPREFIX"; } >>"$log" 2>&1
        wineserver --kill && wineserver --wait
        find "$WINEPREFIX" -mindepth 1 ! -name orrery-setup-lock -delete
        sleep $pause
    done
    return 1
}

if [ ! -e "$ready" ]; then
    mkdir -p "$WINEPREFIX"
    (
        flock 8
        [ -e "$ready" ] || set_up 8>&- || {
            echo "wine.sh: no Windows could be set up in $WINEPREFIX. Wine's last words:" >&2
            tail --lines=20 "$log" >&2
            exit 125
        }
    ) 8>"$WINEPREFIX/orrery-setup-lock"
fi
start_services
[ -p /dev/stdout ] || [ -p /dev/stderr ] || exec wine "$@"

# The reader of a pipe waits until nobody has it open, and Wine may start processes that outlive the
# program, such as the desktop. So the program writes to files, and tail passes on what comes.
output=$(mktemp -d)
touch "$output/out" "$output/err"
trap 'rm -rf "$output"' EXIT
wine "$@" <&0 >"$output/out" 2>"$output/err" &
program=$!
pass_on() { tail --bytes=+1 --follow --sleep-interval=0.02 --pid=$program "$1"; }
pass_on "$output/out" &
pass_on "$output/err" >&2 &
code=0
wait $program || code=$?
wait
exit $code
