#!/usr/bin/env bash
# Runs every fuzzer for the given number of seconds (20), starting from its seeds. What a fuzzer
# finds is left in build/fuzz/findings; turn it into a test before mending it.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-20}
mkdir -p build/fuzz/findings
for fuzzer in build/fuzz/fuzz/fuzz_*; do
    [ -x "$fuzzer" ] && [ -f "$fuzzer" ] || continue
    name=$(basename "$fuzzer")
    mkdir -p "build/fuzz/corpus/$name"
    printf '%s: ' "$name"
    log=build/fuzz/findings/$name.log
    if ! "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/findings/$name-" \
        "build/fuzz/corpus/$name" "fuzz/corpus/${name#fuzz_}" >"$log" 2>&1; then
        echo "FAILED"
        tail -n 40 "$log"
        exit 1
    fi
    grep -o 'number_of_executed_units: *[0-9]*' "$log"
done
