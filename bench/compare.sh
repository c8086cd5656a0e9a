#!/usr/bin/env bash
# Times whole processes and prints medians and ratios of one run, for the shipped templates and for
# one with much in it, which rich_template.py makes. For .xlsx: this program, the same cells with
# openpyxl, and the limit (unpack the template's bytes, pack the output's bytes with zlib level 6).
# For .xls: this program, the same cells with xlrd and xlwt and with LibreOffice, and the limit
# (write the template's bytes twelve times). The start-up beside that of an empty program. Finally
# one calendar and ten years with every engine, which is also written to docs/performance.md.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" "${packages_bench[@]}"
cmake -S . -B build/bench -G Ninja -DCMAKE_BUILD_TYPE=Release -DORRERY_TESTS=OFF >/dev/null
cmake --build build/bench -- --quiet
# As users have it: a linker leaves a file that the system pages in more slowly than a copy.
cmake --install build/bench --prefix build/bench/installed --strip >/dev/null
cli=build/bench/installed/bin/orrery-cli
rich=build/bench/template/Rich.xlsx
[ -e "$rich" ] || /usr/bin/python3 bench/rich_template.py "${rich%/*}" data/template/Desk.ini
/usr/bin/python3 bench/compare.py "$cli" build/bench/bench "${1:-31}" \
    data/template/*.xlsx "$rich"
/usr/bin/python3 bench/engines.py "$cli" build/bench/bench \
    docs/performance.md data/template/Desk.xlsx "$rich"
