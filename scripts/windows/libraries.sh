#!/usr/bin/env bash
# Cross-builds the libraries of the Windows program from Debian's source packages, once: into the
# user's cache folder, where they are found the next time. Prints the folder that holds them.
#   scripts/windows/libraries.sh
set -euo pipefail
cd "$(dirname "$0")/../.."

host=x86_64-w64-mingw32
cache=${XDG_CACHE_HOME:-$HOME/.cache}/orrery/windows
# What is built depends on these files and the compiler; when one changes, all is built anew.
key=$({ cat scripts/windows/libraries.sh scripts/windows/collectable.py; $host-g++-posix --version; } | sha256sum)
prefix=$cache/${key:0:16}
[ -e "$prefix/complete" ] && echo "$prefix" && exit
mkdir -p "$cache"
exec 9>"$cache/lock" # two builds at once would spoil each other's folder
flock 9
[ -e "$prefix/complete" ] && echo "$prefix" && exit
rm -rf "$prefix"
mkdir -p "$prefix/src" "$prefix/apt/lists/partial"

log=$prefix/build.log
say() { echo "$*" >&2; }
trap 'say "The libraries could not be built; the last lines of $log:"; tail -30 "$log" >&2' ERR

# Source packages of the release that the machine is set up for, without changing its set-up.
fetch_sources() {
    apt-get indextargets --format '$(REPO_URI) $(RELEASE) $(COMPONENT)' \
        'Created-By: Packages' 'Origin: Debian' | sort -u | sed 's/^/deb-src /' \
        >"$prefix/apt/sources.list"
    local options=(-q -o "Dir::Etc::SourceList=$prefix/apt/sources.list"
        -o Dir::Etc::SourceParts=/dev/null -o "Dir::State::Lists=$prefix/apt/lists"
        -o APT::Sandbox::User=root)
    apt-get "${options[@]}" update
    (cd "$prefix/src" && apt-get "${options[@]}" source \
        wxwidgets3.2 pugixml libdeflate libzip mbedtls googletest utf8proc cairo &&
        apt-get "${options[@]}" source --tar-only pixman libical3 &&
        tar xf pixman_*.orig.tar.gz && tar xf libical3_*.orig.tar.gz)
}

# source_of PACKAGE: the folder of its unpacked sources.
source_of() { find "$prefix/src" -mindepth 1 -maxdepth 1 -type d -name "$1-*"; }

# The libraries name their sources in messages: without the folders of the machine that built them.
flags="-Os -ffunction-sections -fdata-sections -ffile-prefix-map=$prefix/src/="

# with_cmake PACKAGE OPTION...: configures, builds, installs.
with_cmake() {
    local source build
    source=$(source_of "$1")
    build=$prefix/src/build-$1
    shift
    cmake -S "$source" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=MinSizeRel \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw.cmake" -DCMAKE_INSTALL_PREFIX="$prefix" \
        -DCMAKE_C_FLAGS="$flags" -DCMAKE_CXX_FLAGS="$flags" \
        -DCMAKE_PREFIX_PATH="$prefix" -DBUILD_SHARED_LIBS=OFF "$@"
    cmake --build "$build"
    cmake --install "$build"
}

build_wxwidgets() {
    local source build=$prefix/src/build-wx
    source=$(source_of 'wxwidgets3.2')
    mkdir "$build"
    (cd "$build" && "$source/configure" --host=$host --prefix="$prefix" \
        CC=$host-gcc-posix CXX=$host-g++-posix \
        CFLAGS="$flags" CXXFLAGS="$flags -Wno-deprecated-declarations" \
        --disable-shared --enable-unicode --disable-debug_flag --enable-pch --with-zlib=sys --without-libpng \
        --without-libjpeg --without-libtiff --without-regex --without-expat --without-opengl \
        --disable-svg --disable-mdi --disable-docview --disable-xrc --disable-aui --disable-html \
        --disable-propgrid --disable-ribbon --disable-richtext --disable-stc --disable-webview \
        --disable-mediactrl --disable-sockets --disable-protocols \
        --disable-debugreport --disable-help --disable-joystick --disable-sound)
    make -C "$build" -j"$(nproc)"
    make -C "$build" install
}

# Its makefile knows the system by the compiler's name, which must not end in a thread model.
build_libdeflate() {
    local source
    source=$(source_of libdeflate)
    make -C "$source" CC=$host-gcc-posix AR=$host-ar CFLAGS="$flags -O2" libdeflatestatic.lib
    cp "$source/libdeflatestatic.lib" "$prefix/lib/"
    cp "$source/libdeflate.h" "$prefix/include/"
}

# with_configure PACKAGE FOLDER OPTION...: configures, builds and installs a folder of it. Debian's patches
# are younger than the generated makefiles, which need not be generated again.
with_configure() {
    local source folder=$2 build=$prefix/src/build-$1
    source=$(source_of "$1")
    shift 2
    mkdir "$build"
    (cd "$build" && PKG_CONFIG_LIBDIR="$prefix/lib/pkgconfig" "$source/configure" --host=$host \
        --prefix="$prefix" CC=$host-gcc-posix CXX=$host-g++-posix CFLAGS="$flags" \
        CPPFLAGS="-I$prefix/include" LDFLAGS="-L$prefix/lib" \
        --disable-shared --disable-dependency-tracking "$@")
    make -C "$build/$folder" -j"$(nproc)" ACLOCAL=: AUTOCONF=: AUTOHEADER=: AUTOMAKE=: install
}

# Writes PDF files, with the fonts of Windows.
build_cairo() {
    with_configure pixman pixman --disable-gtk --disable-libpng --disable-openmp \
        --disable-mmx --disable-sse2 --disable-ssse3
    with_configure cairo src --enable-pdf --enable-win32 --enable-win32-font \
        --disable-png --disable-ps --disable-svg --disable-script --disable-interpreter \
        --disable-ft --disable-fc --disable-xlib --disable-xcb --without-x \
        --disable-gobject --disable-trace --disable-gtk-doc \
        pixman_CFLAGS="-I$prefix/include/pixman-1" pixman_LIBS="-L$prefix/lib -lpixman-1"
}

# Parses iCalendar files: the C library alone, without calendars other than the Gregorian. Its tables of time
# zones are not used; the library would name the folder of this machine that has them.
build_libical() {
    sed -i 's|"${CMAKE_INSTALL_PREFIX}/share/libical"|"."|' "$(source_of libical)/src/libical/CMakeLists.txt"
    with_cmake libical -DSTATIC_ONLY=ON -DWITH_CXX_BINDINGS=OFF -DICAL_GLIB=OFF \
        -DICAL_BUILD_DOCS=OFF -DLIBICAL_BUILD_TESTING=OFF -DCMAKE_DISABLE_FIND_PACKAGE_ICU=ON
}

# Lets the linker leave out what the programs do not use of the libraries, the C++ library among them.
make_collectable() {
    local file
    cp "$($host-g++-posix -print-file-name=libstdc++.a)" "$prefix/lib/"
    for file in "$prefix"/lib/*.a "$prefix"/lib/*.lib; do
        scripts/windows/collectable.py "$file" "$prefix/src/collectable"
        mv "$prefix/src/collectable" "$file"
        $host-ranlib "$file"
    done
    scripts/windows/collectable.py --script $host-ld >"$prefix/lib/collectable.ld"
}

say "Building the Windows libraries into $prefix (about five minutes; later runs find them)"
{
    fetch_sources
    with_cmake pugixml
    with_cmake utf8proc -DUTF8PROC_ENABLE_TESTING=OFF
    with_cmake mbedtls -DENABLE_PROGRAMS=OFF -DENABLE_TESTING=OFF -DMBEDTLS_FATAL_WARNINGS=OFF
    with_cmake libzip -DENABLE_COMMONCRYPTO=OFF -DENABLE_GNUTLS=OFF -DENABLE_MBEDTLS=OFF \
        -DENABLE_OPENSSL=OFF -DENABLE_WINDOWS_CRYPTO=OFF -DENABLE_BZIP2=OFF -DENABLE_LZMA=OFF \
        -DENABLE_ZSTD=OFF -DBUILD_TOOLS=OFF -DBUILD_REGRESS=OFF -DBUILD_EXAMPLES=OFF \
        -DBUILD_DOC=OFF
    build_libdeflate
    build_cairo
    build_libical
    with_cmake googletest -DBUILD_GMOCK=ON -Dgtest_disable_pthreads=OFF
    build_wxwidgets
    make_collectable
} >"$log" 2>&1
# CLI11 is headers only and comes from the build machine's own package.
mkdir -p "$prefix/include" "$prefix/share/cmake"
cp -r /usr/include/CLI "$prefix/include/"
cp -r /usr/share/cmake/CLI11 "$prefix/share/cmake/"
rm -rf "$prefix/src" "$prefix/apt"
touch "$prefix/complete"
echo "$prefix"
