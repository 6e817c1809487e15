#!/usr/bin/env bash
# Makes a release of the commit that is checked out, in dist: the package for Debian, the folder that
# lies anywhere, both for Windows, and their sums. "--linux" leaves those for Windows out. Refuses a tree with
# changes, and fails as a whole when one part does: then there is no dist.
source "$(dirname "$0")/common.sh"

linux_only=
[ "${1:-}" != --linux ] || linux_only=1
install_packages git
if [ -n "$(git status --porcelain)" ]; then
    echo "There are changes that are not committed. A release is made of a commit:" >&2
    git status --short >&2
    exit 1
fi
VERSION=$(version)
OUT=$PWD/dist
step() { printf '\n=== %s (%s)\n' "$1" "$(date +%T)"; }

rm -rf "$OUT" "$OUT.part" "$PACKAGES"
mkdir -p "$PACKAGES"
install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_MANUAL[@]}"
use_picture_font

step "Lapvane $VERSION, $(git rev-parse --short HEAD): program and manual"
build release lapvane lapvane-tool lapvane-instrument lapvane_data manual

step "package for Debian"
scripts/deb.sh --built

step "folder that lies anywhere"
cpack --config build/release/CPackConfig.cmake -B build/release/pack
cp "build/release/pack/lapvane-$VERSION-linux-$(uname -m).tar.gz" "$PACKAGES"

if [ -z "$linux_only" ]; then
    step "Windows"
    scripts/windows.sh package
    ls "$PACKAGES/lapvane-$VERSION-windows-x86_64.zip" "$PACKAGES/lapvane-$VERSION-windows-x86_64-setup.exe"
fi

step "they start"
scripts/start-check.sh "$PACKAGES"/lapvane_*.deb "$PACKAGES"/lapvane-*.tar.gz

step "sums"
mkdir -p "$OUT.part"
cp "$PACKAGES"/lapvane[-_]"$VERSION"[-.]* "$OUT.part"
(cd "$OUT.part" && sha256sum ./* | sed 's|\./||' >SHA256SUMS && cat SHA256SUMS)
mv "$OUT.part" "$OUT"
echo "The release: $OUT"
