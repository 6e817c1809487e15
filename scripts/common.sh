# Shared by ./run, ./test and .ci/run: where things are, what must be installed, how to build.
# Sourced, not run.

set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

PACKAGES_BUILD=(build-essential cmake ninja-build ccache
    qt6-base-dev qt6-serialport-dev qt6-svg-dev libqt6svg6 qt6-translations-l10n
    libgl1-mesa-dev libgtest-dev libbenchmark-dev libcli11-dev nlohmann-json3-dev)
PACKAGES_RUN=(fonts-dejavu-core)
PACKAGES_HOUSE=(git python3)
PACKAGES_FORMAT=(clang-format-14)
PACKAGES_TEST=(poppler-utils)
PACKAGES_FONTS=(fontconfig fonts-dejavu-core fonts-noto-core fonts-liberation fonts-inter)
PACKAGES_FUZZ=(clang libclang-rt-dev)
PACKAGES_WINDOWS=(g++-mingw-w64-x86-64-posix googletest wine64 dpkg-dev nsis xvfb xauth xdotool imagemagick
    poppler-utils)
PACKAGES_MANUAL=(libcmark-gfm-dev libcmark-gfm-extensions-dev)
PACKAGES_DEB=(git dpkg-dev fakeroot chrpath librsvg2-bin desktop-file-utils appstream lintian man-db)
PACKAGES_START=(xvfb xdotool)
PACKAGES_DEB_CHECK=(debootstrap xvfb xdotool openbox imagemagick)
PACKAGES_TIDY=(clang-tidy)
PACKAGES_COVERAGE=(gcovr)

# Installs what is missing, as root or with sudo; says what to do where neither works.
install_packages() {
    local missing=() package
    for package in "$@"; do
        dpkg-query -W -f='${db:Status-Status}\n' "$package" 2>/dev/null | grep -qx installed ||
            missing+=("$package")
    done
    [ ${#missing[@]} -eq 0 ] && return 0
    if ! command -v apt-get >/dev/null; then
        echo "This machine has no apt-get. Install by hand: ${missing[*]}" >&2
        return 1
    fi
    local as=()
    if [ "$(id -u)" -ne 0 ]; then
        if ! command -v sudo >/dev/null; then
            echo "Neither root nor sudo. As root: apt-get install ${missing[*]}" >&2
            return 1
        fi
        as=(sudo)
    fi
    echo "Installing: ${missing[*]}"
    apt_get update -qq
    apt_get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
}

# apt-get, which waits while another program holds one of its locks: a fresh machine updates itself.
apt_get() {
    local errors tries=0
    errors=$(mktemp)
    until "${as[@]}" env DEBIAN_FRONTEND=noninteractive LC_ALL=C \
        apt-get -o DPkg::Lock::Timeout=600 "$@" 2>"$errors"; do
        if ! grep -q 'Could not get lock\|Unable to lock' "$errors" || [ $((++tries)) -gt 120 ]; then
            cat "$errors" >&2
            rm -f "$errors"
            return 1
        fi
        [ "$tries" -gt 1 ] || echo "Another program is installing packages: waiting for it."
        sleep 5
    done
    rm -f "$errors"
}

# Pictures look the same whatever fonts the machine has.
use_picture_font() { export FONTCONFIG_FILE=$PWD/tests/fonts/dejavu.conf; }

# The version, which CMakeLists.txt alone says.
version() { sed -n 's/^project(lapvane VERSION \([0-9.]*\).*/\1/p' CMakeLists.txt; }

# Where the finished packages go.
PACKAGES=$PWD/build/packages

# build PRESET [TARGET ...]
build() {
    local preset=$1
    shift
    cmake --preset "$preset" >"${TMPDIR:-/tmp}/lapvane-cmake.log" 2>&1 || {
        cat "${TMPDIR:-/tmp}/lapvane-cmake.log" >&2
        return 1
    }
    if [ $# -gt 0 ]; then
        cmake --build --preset "$preset" --target "$@"
    else
        cmake --build --preset "$preset"
    fi
}
