#!/usr/bin/env bash
# Makes the README's picture: the calendar of scripts/demo.sh as LibreOffice prints it.
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/packages.sh
install_packages libreoffice-calc poppler-utils imagemagick fonts-crosextra-carlito

scripts/demo.sh
folder=$(mktemp -d)
trap 'rm -rf "$folder"' EXIT
soffice -env:UserInstallation="file://$folder/profile" --headless --convert-to pdf \
    --outdir "$folder" output/2027Desk.xls >/dev/null
pdftoppm -r 84 -png "$folder/2027Desk.pdf" "$folder/page"
convert "$folder/page-12.png" "$folder/page-13.png" -bordercolor '#d9dce1' -border 1 \
    -bordercolor white -border 10 +append +dither -colors 128 docs/images/desk-2027.png
