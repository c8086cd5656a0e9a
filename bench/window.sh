#!/usr/bin/env bash
# Times the window: medians of whole processes that open a window and leave, compared with a bare
# window of the toolkit and with one that hides the page, in the same rounds; the main window with many
# templates and with all pages painted; the change of the year, the dragging of a page; and the parameter
# dialog with as many lists of names as the tables can contain.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" "${packages_bench[@]}" "${packages_window_test[@]}"
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORRERY_TESTS=OFF >/dev/null
cmake --build build/bench -- --quiet
tests/ui/wx/with_display.sh /usr/bin/python3 bench/window.py build/bench/bench \
    docs/performance.md "${1:-15}"
