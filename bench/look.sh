#!/usr/bin/env bash
# Times looking at sheets: every page of the shipped templates from the file to its drawing, as whole
# processes and inside one process; sheets of more and more cells; and a workbook of 50 MiB. Says
# which are within their limits and writes the tables into docs/performance.md.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" "${packages_bench[@]}"
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORRERY_TESTS=OFF >/dev/null
cmake --build build/bench --target orrery-cli measure look_bench -- --quiet
strip -o build/bench/orrery-cli build/bench/src/cli/orrery-cli
/usr/bin/python3 bench/look_sheets.py build/bench/look
/usr/bin/python3 bench/look.py build/bench/orrery-cli build/bench/bench build/bench/look \
    docs/performance.md "${1:-15}"
