# Sourced by the commands beside it: installs what is missing on Debian and Ubuntu, and builds a preset.
# Says what it does on the standard error; the standard output stays the programs' own.

set -euo pipefail
project=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)

say() { printf '%s\n' "$*" >&2; }

# Package and a file that it brings: when every file is there, nothing is asked of the package manager.
needed_packages() {
    local libdir
    libdir=/usr/lib/$(dpkg-architecture -qDEB_HOST_MULTIARCH 2>/dev/null || echo "$(uname -m)-linux-gnu")
    cat <<EOF
g++ /usr/bin/g++
cmake /usr/bin/cmake
ninja-build /usr/bin/ninja
pkg-config /usr/bin/pkg-config
ccache /usr/bin/ccache
qtbase5-dev $libdir/cmake/Qt5Widgets/Qt5WidgetsConfig.cmake
qtbase5-private-dev $libdir/cmake/Qt5AccessibilitySupport/Qt5AccessibilitySupportConfig.cmake
libqt5sql5-sqlite $libdir/qt5/plugins/sqldrivers/libqsqlite.so
qttranslations5-l10n /usr/share/qt5/translations/qtbase_zh_CN.qm
libqt5svg5-dev $libdir/cmake/Qt5Svg/Qt5SvgConfig.cmake
libboost-thread-dev $libdir/libboost_thread.so
libboost-date-time-dev $libdir/libboost_date_time.so
libcurl4-openssl-dev $libdir/pkgconfig/libcurl.pc
libicu-dev /usr/include/unicode/utrans.h
libfmt-dev /usr/include/fmt/core.h
libkf5archive-dev $libdir/cmake/KF5Archive/KF5ArchiveConfig.cmake
liblog4cxx-dev /usr/include/log4cxx/log4cxx.h
libminizip-dev /usr/include/minizip/unzip.h
qttools5-dev $libdir/cmake/Qt5UiPlugin/Qt5UiPluginConfig.cmake
libxlsxwriter-dev /usr/include/xlsxwriter.h
zlib1g-dev /usr/include/zlib.h
libgtest-dev /usr/include/gtest/gtest.h
libgmock-dev /usr/include/gmock/gmock.h
openssl /usr/bin/openssl
python3-aiosmtpd /usr/lib/python3/dist-packages/aiosmtpd/__init__.py
fonts-noto-cjk /usr/share/fonts/opentype/noto/NotoSansCJK-Regular.ttc
xvfb /usr/bin/Xvfb
xauth /usr/bin/xauth
EOF
    if [ "${1:-}" = package ]; then
        cat <<EOF
dpkg-dev /usr/bin/dpkg-shlibdeps
file /usr/bin/file
EOF
    fi
    if [ "${1:-}" = docs ]; then
        echo doxygen /usr/bin/doxygen
    fi
    if [ "${1:-}" = coverage ]; then
        echo gcovr /usr/bin/gcovr
    fi
    if [ "${1:-}" = fuzz ]; then
        cat <<EOF
clang /usr/bin/clang++
libclang-rt-14-dev /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a
EOF
    fi
}

install_missing() {
    local missing=() package file as_root=()
    while read -r package file; do
        [ -e "$file" ] || missing+=("$package")
    done < <(needed_packages "$@")
    [ ${#missing[@]} -gt 0 ] || return 0
    if ! command -v apt-get >/dev/null; then
        say "These packages are missing, and only apt-get is known here: ${missing[*]}"
        exit 2
    fi
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null || { say "As root, please: apt-get install ${missing[*]}"; exit 2; }
        as_root=(sudo)
    fi
    say "Installing ${missing[*]}"
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -qq -y --no-install-recommends "${missing[@]}" >&2
}

# build PRESET [TARGET ...]: configures and builds with as many jobs as there are cores.
build() {
    local preset=$1 log
    shift
    local launcher=()
    command -v ccache >/dev/null && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
    mkdir -p "$project/build"
    log=$project/build/$preset-configure.log
    say "Building $preset"
    if ! (cd "$project" && cmake --preset "$preset" "${launcher[@]}" >"$log" 2>&1); then
        cat "$log" >&2
        exit 2
    fi
    (cd "$project" && cmake --build "build/$preset" --parallel "$(nproc)" ${1:+--target "$@"}) >&2
}
