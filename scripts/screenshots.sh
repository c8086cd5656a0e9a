#!/usr/bin/env bash
# Copies the pictures of windows in the README and the help from those that the window tests take.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages "${packages_build[@]}" "${packages_test[@]}" "${packages_window_test[@]}" zopfli
cmake --preset linux >/dev/null
cmake --build --preset linux --target window_tests orrery
export ORRERY_WALK_PICTURES=$PWD/build/linux/screenshots/light-100
ctest --preset linux -R '^window\.(pictures-light-100|own_workbook)$'
for name in main main-saved main-pdf walk-dropped walk-pages parameters-monthly parameters-yearly holidays country \
    own-day import tip about; do
    convert "build/linux/screenshots/light-100/$name.png" -strip +dither -colors 64 \
        "docs/images/window/$name.png"
    zopflipng -y "docs/images/window/$name.png" "docs/images/window/$name.png" >/dev/null
done
