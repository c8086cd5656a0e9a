#!/usr/bin/env bash
# Runs every fuzzer from its seeds for the given number of seconds (default 20), as many at a time as there
# are processors. Findings are in build/fuzz/findings; make a test of a finding before you fix it.
set -euo pipefail
cd "$(dirname "$0")/.."
export seconds=${1:-20}
mkdir -p build/fuzz/findings

fuzz() {
    local fuzzer=$1 name log
    name=$(basename "$fuzzer")
    log=build/fuzz/findings/$name.log
    mkdir -p "build/fuzz/corpus/$name"
    if ! "$fuzzer" -max_total_time="$seconds" -timeout=10 -rss_limit_mb=1024 -print_final_stats=1 \
        -artifact_prefix="build/fuzz/findings/$name-" \
        "build/fuzz/corpus/$name" "fuzz/corpus/${name#fuzz_}" >"$log" 2>&1; then
        echo "$name: FAILED"
        tail -n 40 "$log"
        return 1
    fi
    echo "$name: $(grep -o 'number_of_executed_units: *[0-9]*' "$log")"
}
export -f fuzz

find build/fuzz/fuzz -maxdepth 1 -name 'fuzz_*' -type f -executable | sort |
    xargs -P "$(nproc)" -I{} bash -c 'fuzz {}'
