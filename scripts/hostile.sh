#!/usr/bin/env bash
# Runs the command over mutated real workbooks and judges what it does: as shipped, where LibreOffice,
# Gnumeric and the Open XML validator read the calendars, too, and under sanitizers. Prints a table of the
# mutations and how the runs ended. Keeps each workbook that fails in build/hostile, with a .txt file that
# says what was done and how to repeat it. Without a corpus it mutates the project's own workbooks.
#
# usage: hostile.sh [--release N] [--sanitizers N] [--seed S]
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/steps.sh

release=2000
sanitizers=500
seed=1
while [ $# -gt 0 ]; do
    case $1 in
    --release) release=$2 ;;
    --sanitizers) sanitizers=$2 ;;
    --seed) seed=$2 ;;
    *)
        sed -n 's/^# usage: /usage: /p' "$0" >&2
        exit 2
        ;;
    esac
    shift 2
done

step "Packages"
install_packages "${packages_build[@]}" "${packages_test[@]}"
install_node
install_node_modules tests/corpus

step "Build"
for preset in linux linux-asan; do
    cmake --preset "$preset" >/dev/null
    cmake --build --preset "$preset" --target orrery-cli
done

failed=0
# run PRESET COUNT SEED [OPTION...]: a mutation test of that build. A missing corpus is reported and is no
# failure.
run() {
    local preset=$1 count=$2 first=$3 code=0
    shift 3
    [ "$count" -gt 0 ] || return 0
    step "$count mutations, preset $preset"
    /usr/bin/python3 -B tests/hostile/mutate.py --cli "build/$preset/src/cli/orrery-cli" \
        --corpus "$(corpus "$preset")" --cases "$count" --seed "$first" \
        --keep "build/hostile/$preset" "$@" || code=$?
    [ "$code" = 0 ] || [ "$code" = 77 ] || failed=1
}

corpus() { sed -n 's/^ORRERY_CORPUS_DIR:PATH=//p' "build/$1/CMakeCache.txt"; }

rm -rf build/hostile
run linux "$release" "$seed" --slow-readers 600 --heavy 1
run linux-asan "$sanitizers" $((seed + release)) --sanitized --heavy 0.02
[ "$failed" = 0 ] || echo "FAILED; see build/hostile"
exit "$failed"
