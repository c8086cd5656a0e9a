#!/usr/bin/env bash
# Runs a command on a private display: with_display.sh COMMAND [ARGUMENT...]
#
# The command gets a virtual screen with a window manager, a session bus with its accessibility bus,
# an empty home folder, and an `xdg-open` that opens nothing but appends its arguments, one line per
# call, to the file $ORRERY_OPENED. All of it is removed when the command ends; its exit code is
# passed on. ORRERY_SCREEN: size of the screen, 3840x2160 by default.
set -euo pipefail

for tool in Xvfb openbox dbus-run-session xprop setpriv; do
    command -v "$tool" >/dev/null || {
        echo "with_display.sh: $tool is missing; install xvfb, openbox, dbus and x11-utils." >&2
        exit 1
    }
done

scratch=$(mktemp -d "${TMPDIR:-/tmp}/orrery-display-XXXXXX")
finish() {
    local code=$?
    trap - EXIT
    kill $(jobs -p) 2>/dev/null || true
    wait 2>/dev/null || true
    # A process that is still ending may write there; that does not affect the result.
    for _ in 1 2 3 4 5; do
        rm -rf "$scratch" 2>/dev/null && break
        sleep 0.2
    done
    exit "$code"
}
trap finish EXIT
trap 'exit 129' HUP
trap 'exit 130' INT
trap 'exit 143' TERM

mkdir -p -m 700 "$scratch"/{home,config/gtk-3.0,data,cache,run,bin}
export HOME=$scratch/home XDG_CONFIG_HOME=$scratch/config XDG_DATA_HOME=$scratch/data
export XDG_CACHE_HOME=$scratch/cache XDG_RUNTIME_DIR=$scratch/run
export ORRERY_OPENED=$scratch/opened PATH=$scratch/bin:$PATH
export LC_ALL=C.UTF-8 GDK_BACKEND=x11 GTK_IM_MODULE=gtk-im-context-simple
export GSETTINGS_BACKEND=memory GIO_USE_VFS=local
unset WAYLAND_DISPLAY DBUS_SESSION_BUS_ADDRESS AT_SPI_BUS_ADDRESS XAUTHORITY
: >"$ORRERY_OPENED"
printf '%s\n' '#!/bin/sh' 'printf "%s\n" "$*" >>"$ORRERY_OPENED"' >"$scratch/bin/xdg-open"
chmod +x "$scratch/bin/xdg-open"
# No animations: screenshots are repeatable and tests do not wait.
printf '%s\n' '[Settings]' 'gtk-enable-animations=0' 'gtk-cursor-blink=0' \
    "gtk-font-name=${ORRERY_FONT:-Cantarell 11}" >"$XDG_CONFIG_HOME/gtk-3.0/settings.ini"

# Modern window frames in the colour of the theme.
case ${GTK_THEME:-} in
    *dark) shade=#2d2d2d dim=#383838 ink=#eeeeec line=#1b1b1b ;;
    *) shade=#e1dedb dim=#f6f5f4 ink=#2e3436 line=#bfb8b1 ;;
esac
mkdir -p "$XDG_DATA_HOME/themes/Plain/openbox-3" "$XDG_CONFIG_HOME/openbox"
cat >"$XDG_DATA_HOME/themes/Plain/openbox-3/themerc" <<THEME
border.width: 1
border.color: $line
padding.width: 8
padding.height: 7
window.handle.width: 0
window.client.padding.width: 0
window.label.text.justify: center
window.*.title.bg: flat solid
window.active.title.bg.color: $shade
window.inactive.title.bg.color: $dim
window.*.label.bg: parentrelative
window.*.label.text.color: $ink
window.*.button.*.bg: parentrelative
window.*.button.*.image.color: $ink
THEME
cat >"$XDG_CONFIG_HOME/openbox/rc.xml" <<SETTINGS
<openbox_config xmlns="http://openbox.org/3.4/rc">
  <theme>
    <name>Plain</name><titleLayout>LC</titleLayout>
    <font place="ActiveWindow"><name>Cantarell</name><size>11</size><weight>Bold</weight></font>
    <font place="InactiveWindow"><name>Cantarell</name><size>11</size></font>
  </theme>
  <keyboard><keybind key="A-F4"><action name="Close"/></keybind></keyboard>
</openbox_config>
SETTINGS

# Children die with their parent, so that a killed test leaves no server behind.
start() { setpriv --pdeathsig KILL "$@" >>"$scratch/log" 2>&1 & }

wait_for() { # WHAT COMMAND...: retries the command for twenty seconds
    local what=$1 end=$((SECONDS + 20))
    shift
    until "$@" >/dev/null 2>&1; do
        if [ "$SECONDS" -ge "$end" ]; then
            echo "with_display.sh: $what did not start." >&2
            cat "$scratch/log" >&2
            exit 1
        fi
        sleep 0.05
    done
}

# The server picks the first free display number and writes it to the file.
start Xvfb -displayfd 5 -screen 0 "${ORRERY_SCREEN:-3840x2160}x24" -dpi 96 -nolisten tcp -noreset 5>"$scratch/number"
wait_for "the virtual display" test -s "$scratch/number"
export DISPLAY=:$(cat "$scratch/number")

start openbox --sm-disable
manager_runs() { xprop -root _NET_SUPPORTING_WM_CHECK | grep -q 'window id'; }
wait_for "the window manager" manager_runs

# In the background, so that this script handles signals before the command ends. Only the buses'
# output goes to the log, not the command's.
setpriv --pdeathsig TERM dbus-run-session -- \
    setpriv --pdeathsig KILL bash -c 'exec "$@" 2>&9 9>&-' command "$@" \
    <&0 9>&2 2>>"$scratch/log" &
wait $!
