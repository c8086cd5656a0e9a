#!/usr/bin/env bash
# Installs what is missing, builds everything with warnings as errors, and proves what the README says,
# each claim once: the layout of the code, short runs of the fuzzers, clang-tidy, the unit tests under
# AddressSanitizer and UndefinedBehaviorSanitizer, and the programs as shipped, from outside.
#
#   scripts/test.sh          what every push runs
#   scripts/test.sh --full   everything: every test in both builds, every workbook, long loops
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
. scripts/steps.sh

full=OFF
seconds=10
case ${1:-} in
'') ;;
--full) full=ON seconds=20 ;;
*) sed -n 's/^#   //p' "$0" >&2 && exit 2 ;;
esac

step "Packages"
install_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_window_test[@]}"
install_node
install_node_modules tests/data
install_node_modules tests/corpus
install_node_modules tests/look/number_format

step "Layout of the code"
git ls-files '*.cpp' '*.h' | xargs clang-format --dry-run --Werror

step "Build of the programs"
cmake --preset linux -DORRERY_FULL=$full >/dev/null
cmake --build --preset linux

step "Build of the fuzzers"
cmake --preset fuzz >/dev/null
cmake --build --preset fuzz

step "Fuzzers"
scripts/fuzz.sh $seconds

step "Build with sanitizers"
cmake --preset linux-asan -DORRERY_FULL=$full >/dev/null
cmake --build --preset linux-asan

step "clang-tidy"
cmake --build --preset linux-asan --target tidy

step "Unit tests under sanitizers"
ctest --preset linux-asan -j2

step "The programs from outside"
ctest --preset linux -j2

if [ $full = ON ]; then
    step "Mutated workbooks"
    scripts/hostile.sh
fi
