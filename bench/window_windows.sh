#!/usr/bin/env bash
# Times the start of the Windows program under Wine: medians of whole processes that open the main
# window and leave, compared with a bare window of the toolkit and with one that hides the page, in
# the same rounds.
#   bench/window_windows.sh [ROUNDS]
set -euo pipefail
cd "$(dirname "$0")/.."
build=build/bench-windows
cmake --preset windows -B "$build" -DORRERY_TESTS=OFF -DORRERY_BENCH=ON \
    -DORRERY_WINDOWS_LIBRARIES="$(scripts/windows/libraries.sh)" >/dev/null
cmake --build "$build" --target window_bench -- --quiet
export ORRERY_WINEPREFIX=${ORRERY_WINEPREFIX:-${XDG_CACHE_HOME:-$HOME/.cache}/orrery/wine}-windows
tests/ui/wx/with_display.sh /usr/bin/python3 bench/window_windows.py \
    "$build/bench/window_bench.exe" "${1:-15}"
