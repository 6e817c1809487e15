#!/usr/bin/env bash
# Makes the package for Debian and Ubuntu, build/packages/lapvane_VERSION-1_ARCHITECTURE.deb, with the Qt of
# the distribution: the programs in /usr/lib/lapvane, what they read in /usr/share/lapvane, the manual in
# /usr/share/doc/lapvane. There are no maintainer scripts: what the desktop has to know it learns by the
# triggers of its own packages. Fails on what the checkers of the three formats find, and on an option that
# a man page lacks. Two runs on one build give the same bytes.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_MANUAL[@]}" "${PACKAGES_DEB[@]}"
use_picture_font
[ "${1:-}" = --built ] || build release lapvane lapvane-tool lapvane-instrument lapvane_data manual

VERSION=$(version)-1
ARCHITECTURE=$(dpkg --print-architecture)
MAINTAINER="Lapvane maintainers <maintainers@lapvane.invalid>"
SOURCE_DATE_EPOCH=$(git log -1 --format=%ct)
export SOURCE_DATE_EPOCH LC_ALL=C
WORK=$PWD/build/deb
ROOT=$WORK/root
FILE=$PACKAGES/lapvane_${VERSION}_$ARCHITECTURE.deb

# fill TEMPLATE FILE
fill() {
    sed "s|@MAINTAINER@|$MAINTAINER|; s|@ARCHITECTURE@|$ARCHITECTURE|; s|@VERSION@|$(version)|
         s|@DATE@|$(date -u -d "@$SOURCE_DATE_EPOCH" +%F)|" "$1" >"$2"
}

lay_programs() {
    local name lib=$ROOT/usr/lib/lapvane
    cmake --install build/release --component lapvane --strip --prefix "$lib" >/dev/null
    chrpath -d "$lib/lapvane" >/dev/null  # where a folder that is carried about has its own Qt
    strip --remove-section=.comment --remove-section=.note "$lib"/lapvane{,-tool,-instrument}
    mkdir -p "$ROOT"/usr/{bin,share/lapvane,share/man/man1,share/doc/lapvane}
    install -m 755 packaging/deb/lapvane "$ROOT/usr/bin/lapvane"
    ln -s ../lib/lapvane/lapvane-tool ../lib/lapvane/lapvane-instrument "$ROOT/usr/bin"
    mv "$lib"/man/man1/* "$ROOT/usr/share/man/man1"
    gzip -9n "$ROOT"/usr/share/man/man1/*
    rm -r "$lib/man" "$lib/ports"
    # The programs look beside themselves.
    for name in LANGUAGES.DAT RecentFiles.ini Esempio.pro sensors tracks pages sample; do
        mv "$lib/$name" "$ROOT/usr/share/lapvane"
        ln -s "../../share/lapvane/$name" "$lib/$name"
    done
    # A browser in a box of its own sees /usr/share/doc and no other folder of the system.
    mv "$lib/manual" "$ROOT/usr/share/doc/lapvane"
    ln -s ../../share/doc/lapvane/manual "$lib/manual"
    echo "Nobody writes here: each person has a folder of their own." >"$lib/for-all-users"
}

lay_desktop() {
    local size icons=$ROOT/usr/share/icons/hicolor share=$ROOT/usr/share
    mkdir -p "$share"/{applications,metainfo} "$icons/scalable/apps"
    sed -e '/^Path=/d' -e 's/^Exec=.*/Exec=lapvane/' -e 's/^Icon=.*/Icon=lapvane/' \
        cmake/install/lapvane.desktop >"$share/applications/lapvane.desktop"
    fill packaging/deb/lapvane.metainfo.xml.in "$share/metainfo/local.lapvane.lapvane.metainfo.xml"
    cp data/icons/lapvane.svg "$icons/scalable/apps"
    for size in 16 22 24 32 48 64 128 256; do
        mkdir -p "$icons/${size}x$size/apps"
        rsvg-convert -w $size -h $size data/icons/lapvane.svg -o "$icons/${size}x$size/apps/lapvane.png"
    done
}

lay_documents() {
    local doc=$ROOT/usr/share/doc/lapvane
    cp packaging/deb/{copyright,README.Debian} "$doc"
    gzip -9nc CHANGELOG.md >"$doc/changelog.gz"
    cat >"$WORK/debian/changelog" <<END
lapvane ($VERSION) bookworm; urgency=medium

  * Version $(version). What is new in it stands in changelog.gz.

 -- $MAINTAINER  $(date -u -R -d "@$SOURCE_DATE_EPOCH")
END
    gzip -9nc "$WORK/debian/changelog" >"$doc/changelog.Debian.gz"
    install -D -m 644 packaging/deb/lintian-overrides "$ROOT/usr/share/lintian/overrides/lapvane"
    install -D -m 644 packaging/deb/doc-base "$ROOT/usr/share/doc-base/lapvane"
}

pack() {
    chmod -R u=rwX,go=rX "$ROOT"
    fill packaging/deb/control.in "$WORK/debian/control"
    mkdir -p "$ROOT/DEBIAN" "$PACKAGES"
    (
        cd "$WORK"
        dpkg-shlibdeps -Tsubstvars root/usr/lib/lapvane/lapvane{,-tool,-instrument}
        (cd root && find usr -type f -print0 | sort -z | xargs -0 md5sum) >root/DEBIAN/md5sums
        dpkg-gencontrol -plapvane -ldebian/changelog -Tsubstvars -Proot -fdebian/files
        dpkg-deb --root-owner-group -Zxz --build root "$FILE" >/dev/null
    )
}

# Every option that a tool knows stands in its man page.
check_pages() {
    local tool option help bad=0 bin=build/release/bin
    for tool in lapvane-tool lapvane-instrument; do
        help=$("$bin/$tool" --help)
        [ $tool = lapvane-instrument ] || help+=$(for c in laps compare convert; do "$bin/$tool" $c --help; done)
        for option in $(grep -o -e '--[a-z]\+' <<<"$help" | sort -u); do
            MANWIDTH=80 man -l "$ROOT/usr/share/man/man1/$tool.1.gz" 2>/dev/null | grep -q -e "$option" && continue
            echo "$tool(1) lacks $option" >&2
            bad=1
        done
    done
    return $bad
}

rm -rf "$WORK"
mkdir -p "$WORK/debian"
lay_programs
lay_desktop
lay_documents
pack
check_pages
desktop-file-validate "$ROOT/usr/share/applications/lapvane.desktop"
appstreamcli validate --no-net "$ROOT/usr/share/metainfo/local.lapvane.lapvane.metainfo.xml" >"$WORK/appstream.log" ||
    { cat "$WORK/appstream.log" >&2 && exit 1; }
lintian --fail-on error,warning --allow-root "$FILE"
echo "The package: $FILE"
