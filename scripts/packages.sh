# The Debian packages that the project needs, by purpose, and `install_packages`, which installs what is
# missing, as root or with sudo. Sourced by the other scripts.

packages_build=(g++ ccache cmake ninja-build pkg-config libcli11-dev libdeflate-dev libutf8proc-dev
    fonts-crosextra-carlito fonts-crosextra-caladea fonts-liberation fonts-dejavu-core
    libmbedtls-dev libical-dev zlib1g-dev libwxgtk3.2-dev libgtk-3-dev librsvg2-bin icoutils fp-utils-3.2.2
    python3 python3-markdown)
# What the window tests need: a display, a window manager, the buses, fonts and icons.
packages_window_test=(xvfb openbox xdotool imagemagick dbus x11-utils at-spi2-core python3-gi
    gir1.2-atspi-2.0 fonts-cantarell adwaita-icon-theme)
packages_test=(libpugixml-dev libzip-dev libgtest-dev libgmock-dev libbenchmark-dev clang clang-tidy clang-format llvm
    libclang-rt-14-dev git unzip zip xz-utils man-db groff bash-completion
    python3 python3-openpyxl python3-xlsxwriter python3-pil python3-numpy python3-dateutil
    python3-icalendar python3-vobject
    hebcal python3-ephem python3-lunardate python3-pyluach
    python3-icu python3-uno python3-xlrd python3-xlwt libapache-poi-java default-jdk-headless
    gnumeric libreoffice-calc libreoffice-dev poppler-utils chromium firefox-esr
    python3-fonttools
    python3-html5lib lintian desktop-file-utils appstream xdg-utils gtk-update-icon-cache dpkg-dev)
# The Windows program: cross compiler, tools for its libraries and its set-up program, and Wine.
packages_windows=(advancecomp g++-mingw-w64-x86-64-posix libz-mingw-w64-dev dpkg-dev xz-utils make nsis wine
    wine64 fonts-wine locales)
packages_bench=(libbenchmark-dev libzip-dev python3 python3-openpyxl python3-xlsxwriter python3-pil python3-xlrd python3-xlwt python3-uno
    libreoffice-calc libreoffice-dev)

install_packages() {
    local missing=() package
    for package in "$@"; do
        [ "$(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null)" = installed ] ||
            missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    local as_root=()
    [ "$(id -u)" = 0 ] || as_root=(sudo)
    "${as_root[@]}" apt-get update -qq
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
        apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# Node.js and npm run the Open XML validator; a newer Node.js than Debian's is left alone.
install_node() {
    command -v node >/dev/null && command -v npm >/dev/null || install_packages nodejs npm
}

# install_node_modules FOLDER: the packages that the folder's package-lock.json pins.
install_node_modules() {
    local installed=$1/node_modules/.package-lock.json
    [ -e "$installed" ] && [ ! "$1/package-lock.json" -nt "$installed" ] && return 0
    # Not "npm ci": it needs a lock entry for every system that an optional package names.
    (cd "$1" && npm install --no-save --no-audit --no-fund --silent)
    touch "$installed"
}
