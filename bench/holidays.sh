#!/usr/bin/env bash
# Times the holidays of a year, for every shipped holiday file, and writes the table of the slowest into
# docs/performance.md. Says which are within their limit.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" "${packages_bench[@]}"
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORRERY_TESTS=OFF >/dev/null
cmake --build build/bench --target holidays_bench -- --quiet
/usr/bin/python3 bench/holidays.py build/bench/bench/holidays_bench docs/performance.md
