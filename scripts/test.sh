#!/usr/bin/env bash
# Installs what is missing, builds everything with warnings as errors, and runs every native test:
# layout of the code, the fuzzers for a short while, clang-tidy, the whole suite under
# AddressSanitizer and UndefinedBehaviorSanitizer, and the suite as it is shipped.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh

step() { printf '\n== %s (%s)\n' "$*" "$(date +%H:%M:%S)"; }

step "Packages"
install_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_window_test[@]}"
install_node
install_node_modules tests/data
install_node_modules tests/corpus

step "Layout of the code"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

step "Build"
cmake --preset linux >/dev/null
cmake --build --preset linux

step "Fuzzers"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz
scripts/fuzz.sh 20

step "Build with sanitizers"
cmake --preset linux-asan >/dev/null
cmake --build --preset linux-asan

step "clang-tidy"
cmake --build --preset linux-asan --target tidy

step "Suite under sanitizers"
ctest --preset linux-asan -j2

step "Suite"
ctest --preset linux -j2
