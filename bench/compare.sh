#!/usr/bin/env bash
# Times whole processes: this program, the same cells through openpyxl, and the limit (unpack the
# template's bytes, pack the output's bytes with zlib level 6). Prints medians and ratios of one run.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" libbenchmark-dev python3 python3-openpyxl
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORRERY_TESTS=OFF >/dev/null
cmake --build build/bench >/dev/null
/usr/bin/python3 bench/compare.py build/bench/src/cli/orrery-cli build/bench/bench/limit \
    "${1:-31}" data/template/*.xlsx
