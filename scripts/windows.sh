#!/usr/bin/env bash
# Lapvane for Windows, made and tried on Linux: Qt's base with mingw (once, some twenty minutes, kept
# outside the tree), the whole program, its tests and the tour as Windows programs under wine.
#     scripts/windows.sh            all of it
#     scripts/windows.sh build      Qt and the program
#     scripts/windows.sh package    the .zip and the installer, in build/packages, and both tried
#     scripts/windows.sh record     all of it, and what came of it into the README
source "$(dirname "$0")/common.sh"
source scripts/wine.sh

KEEP=${LAPVANE_KEEP:-${XDG_CACHE_HOME:-$HOME/.cache}/lapvane}
RESULTS=build/windows-results.txt  # a line for each thing that was tried

say() { printf '\n=== %s (%s)\n' "$1" "$(date +%T)"; }
result() { echo "$1" | tee -a "$RESULTS"; }

# Qt's base, of the version that this machine has for Linux: its code generators serve both.
qt_for_windows() {
    local version source folder off
    version=$(dpkg-query -W -f='${source:Version}' qt6-base-dev)
    export LAPVANE_QT_WINDOWS=$KEEP/qt-$version-windows
    [ -e "$LAPVANE_QT_WINDOWS/done" ] && return 0
    say "Qt $version for Windows"
    mkdir -p "$KEEP/apt/lists/partial" "$KEEP/apt/cache/archives/partial"
    # The machine's own list of sources stays as it is.
    sed -n 's/^Types:.*/Types: deb-src/p; /^#/d; /^Types:/!p' /etc/apt/sources.list.d/debian.sources \
        >"$KEEP/apt/source.sources" 2>/dev/null ||
        sed -n 's/^deb /deb-src /p' /etc/apt/sources.list >"$KEEP/apt/source.list"
    local list=$KEEP/apt/source.sources
    [ -s "$list" ] || list=$KEEP/apt/source.list
    local apt=(-o Dir::Etc::SourceList="$list" -o Dir::Etc::SourceParts=/dev/null
        -o Dir::State::Lists="$KEEP/apt/lists" -o Dir::Cache="$KEEP/apt/cache" -o APT::Sandbox::User=root)
    folder=$KEEP/qt-$version
    mkdir -p "$folder"
    (
        cd "$folder"
        apt-get "${apt[@]}" update -qq
        apt-get "${apt[@]}" source -qq --download-only "qt6-base=$version"
        rm -rf source build
        source=$(echo qt6-base_*.dsc)
        dpkg-source --no-check -x "$source" source
    )
    off=()
    for feature in sql network dbus opengl dynamicgl vulkan system_zlib pkg_config tabletevent; do
        off+=("-DFEATURE_$feature=OFF")
    done
    LAPVANE_QT_WINDOWS='' cmake -S "$folder/source" -B "$folder/build" -G Ninja -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_TOOLCHAIN_FILE="$PWD/cmake/mingw.cmake" -DQT_HOST_PATH=/usr \
        -DQT_HOST_PATH_CMAKE_DIR=/usr/lib/x86_64-linux-gnu/cmake \
        -DCMAKE_INSTALL_PREFIX="$LAPVANE_QT_WINDOWS" -DQT_BUILD_EXAMPLES=OFF -DQT_BUILD_TESTS=OFF \
        -DCMAKE_C_COMPILER_LAUNCHER=ccache -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "${off[@]}" >"$folder/configure.log"
    cmake --build "$folder/build"
    cmake --install "$folder/build" --strip >/dev/null
    mkdir -p "$LAPVANE_QT_WINDOWS/licences"
    cp "$folder"/source/LICENSES/{LGPL-3.0-only,GPL-3.0-only}.txt "$LAPVANE_QT_WINDOWS/licences"
    cp "$folder/source/debian/copyright" "$LAPVANE_QT_WINDOWS/licences/qt6-base.txt"
    touch "$LAPVANE_QT_WINDOWS/done"
    rm -rf "$folder/build" "$folder/source"
}

build_windows() {
    install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_MANUAL[@]}" "${PACKAGES_RUN[@]}" "${PACKAGES_WINDOWS[@]}"
    qt_for_windows
    say "native tools, manual, instrument"
    build release
    say "Lapvane for Windows"
    build windows
}

# An instrument of this machine behind COM1, whose console reads the file that INSTRUMENT_CONSOLE names.
start_instrument() {
    INSTRUMENT_CONSOLE=$(mktemp)
    local link=$WINEPREFIX-com1
    tail -f "$INSTRUMENT_CONSOLE" 2>/dev/null |
        build/release/bin/lapvane-instrument --quiet --link "$link" --tank 30 --tracks build/release/bin/tracks \
            --track Valdoro &
    INSTRUMENT=$!
    wine_port 1 "$link"
}
stop_instrument() {
    [ -n "${INSTRUMENT:-}" ] || return 0
    kill "$INSTRUMENT" 2>/dev/null || true
    pkill -f "tail -f $INSTRUMENT_CONSOLE" || true
    wait "$INSTRUMENT" 2>/dev/null || true
    rm -f "$INSTRUMENT_CONSOLE"
    INSTRUMENT=
}
trap 'stop_instrument 2>/dev/null || true; wine_end' EXIT

# run_tests TITLE PROGRAM [ENVIRONMENT ...], suite by suite, so that one that hangs costs its own time only.
# What differs by wine is left out by name, each with its reason, as scripts/wine-differs.txt has it.
run_tests() {  # GTEST_SUITES: only those whose name has it
    local title=$1 program=$2 exe=build/windows/bin/$2.exe log left suite passed failed hung=0 where=all
    [ -z "${DISPLAY:-}" ] || where=screen
    shift 2
    log="build/wine-${title//[ ,]/-}.log"
    left=$(sed -n "s/^\([A-Za-z0-9_]*\.[A-Za-z0-9_/]*\) \(all\|$where\) .*/\1/p" scripts/wine-differs.txt | paste -sd:)
    say "$title"
    wine_end
    : >"$log"
    for suite in $(env "$@" "$WINE" "$exe" --gtest_list_tests 2>/dev/null | tr -d '\r' | sed -n 's/^\([A-Za-z0-9_/]*\.\)$/\1/p' |
        grep "${GTEST_SUITES:-.}"); do
        env "$@" timeout 120 "$WINE" "$exe" "--gtest_filter=$suite*${left:+-$left}" >"$log.one" 2>&1 || true
        tr -d '\r' <"$log.one" >>"$log"
        grep -q '^\[==========\] [0-9]* tests\{0,1\} from .* ran' "$log.one" && continue
        echo "$suite does not come to its end:"
        grep -a '^\[ RUN' "$log.one" | tail -n 1
        hung=$((hung + 1))
        wine_end
    done
    passed=$(grep -ac '^\[       OK' "$log" || true)
    failed=$(grep -ac '^\[  FAILED  \] .* ms)$' "$log" || true)
    grep -a '^\[  FAILED  \] .* ms)$' "$log" || true
    result "$title: $passed passed, $failed failed, $hung suites broken off, $(grep -c . <<<"${left//:/$'\n'}") left out"
    [ "$passed" -gt 0 ] && [ "$failed" = 0 ] && [ "$hung" = 0 ]
}

# What the system's settings say of numbers and dates.
settings() {
    local pair
    for pair in "$@"; do
        "$WINE" reg add 'HKCU\Control Panel\International' /v "${pair%%=*}" /d "${pair#*=}" /f >/dev/null
    done
    wine_end
}
italian_settings() { settings sDecimal=, sThousand=. sShortDate=dd/MM/yyyy sTimeFormat=HH:mm:ss; }
english_settings() { settings sDecimal=. sThousand=, sShortDate=M/d/yyyy "sTimeFormat=h:mm:ss tt"; }

# play_tour LANGUAGE DPI: the real windows, pictures in build/wine-tour/.
play_tour() {
    local out=build/wine-tour/$1-$2 log=build/wine-tour/$1-$2.log
    say "tour ($1, $2 dots an inch)"
    rm -rf "$out"
    mkdir -p "$out"
    start_instrument
    timeout 60 "$WINE" reg add 'HKCU\Control Panel\Desktop' /v LogPixels /t REG_DWORD /d "$2" /f >/dev/null
    wine_end
    timeout 900 xvfb-run -a -s "-screen 0 1920x1200x24" "$WINE" build/windows/bin/tour.exe "$out" "$1" \
        console "$INSTRUMENT_CONSOLE" 2>&1 | tr -d '\r' >"$log" || true
    stop_instrument
    local stops
    stops=$(sed -n 's/^\([0-9]*\) stops$/\1/p' "$log")
    if [ -z "$stops" ] || grep -q 'faults in the windows' "$log"; then
        tail -n 20 "$log"
        result "tour ($1, $2 dots an inch): did not come through"
        return 1
    fi
    result "tour ($1, $2 dots an inch): $stops stops, $(find "$out" -maxdepth 1 -name '*.png' | wc -l) pictures"
}

try_all() {
    local bad=0
    wine_prefix
    # A far end of this machine for the tests of the port.
    build/release/bin/lapvane_far_end "$PWD/build/wine-com12" &
    FAR_END=$!
    wine_port 12 "$PWD/build/wine-com12"
    run_tests "logic" lapvane_tests LAPVANE_FAR_END=12 || bad=1
    kill $FAR_END
    italian_settings
    run_tests "logic, Italian system" lapvane_tests LAPVANE_ITALIAN=1 || bad=1
    GTEST_SUITES=MacchinaQt run_tests "machine, Italian system" lapvane_window_tests LAPVANE_ITALIAN=1 WINEQT_QPA_PLATFORM=offscreen ||
        bad=1
    english_settings
    # wine hands what begins with QT_ on to its programs only behind its own name.
    run_tests "windows, no screen" lapvane_window_tests WINEQT_QPA_PLATFORM=offscreen \
        WINEQT_QPA_FONTDIR=Z:/usr/share/fonts/truetype/dejavu || bad=1
    wine_end
    # These wait more than they work, and each has a Windows of its own.
    local jobs=() job
    in_own_windows screen xvfb-run -a -s "-screen 0 1920x1200x24" "$0" on-screen &
    jobs+=($!)
    in_own_windows tour-1 "$0" tour it 96 &
    jobs+=($!)
    in_own_windows tour-2 "$0" tour en 120 &
    jobs+=($!)
    in_own_windows tour-3 "$0" tour it 144 &
    jobs+=($!)
    for job in "${jobs[@]}"; do wait "$job" || bad=1; done
    return $bad
}

# in_own_windows NAME COMMAND ...
in_own_windows() {
    WINEPREFIX=$PWD/build/wine-$1 "${@:2}"
}

# The .zip and the installer, of the folder that the build lays.
make_packages() {
    say "packages"
    local version stage=$PWD/build/windows-stage out=$PWD/build/packages
    version=$(sed -n 's/^project(lapvane VERSION \([0-9.]*\) .*/\1/p' CMakeLists.txt)
    ZIP=$out/lapvane-$version-windows-x86_64.zip
    SETUP=$out/lapvane-$version-windows-x86_64-setup.exe
    rm -rf "$stage" "$ZIP" "$SETUP"
    mkdir -p "$out"
    cmake --install build/windows --strip --prefix "$stage/lapvane-$version" >/dev/null
    x86_64-w64-mingw32-strip "$stage/lapvane-$version"/lib*.dll
    (cd "$stage" && cmake -E tar cf "$ZIP" --format=zip "lapvane-$version")
    installer_lists "$stage/lapvane-$version"
    makensis -V2 -NOCD "-DVERSION=$version" "-DFROM=$stage/lapvane-$version" "-DOUT=$SETUP" \
        "-DICON=$PWD/cmake/install/lapvane.ico" "-DINSTALL=$stage/install.nsh" "-DREMOVE=$stage/remove.nsh" \
        "-DKILOBYTES=$(du -sk "$stage/lapvane-$version" | cut -f1)" cmake/install/lapvane.nsi
    result "packages: $(basename "$ZIP") $(du -h "$ZIP" | cut -f1), $(basename "$SETUP") $(du -h "$SETUP" | cut -f1)"
}

# The installer puts each file and takes each away by its name, so that nothing else of a folder goes.
installer_lists() {
    local from=$1 folder file
    : >"$(dirname "$from")/install.nsh"
    : >"$(dirname "$from")/remove.nsh"
    (cd "$from" && find . -type d | sort) | while read -r folder; do
        folder=${folder#.}
        folder=${folder#/}
        echo "SetOutPath \"\$INSTDIR${folder:+\\${folder//\//\\}}\""
        (cd "$from/$folder" && find . -maxdepth 1 -type f -printf '%f\n' | sort) | while read -r file; do
            echo "File \"$from/${folder:+$folder/}$file\""
        done
    done >"$(dirname "$from")/install.nsh"
    (cd "$from" && find . -type f -printf '%P\n' | sort) | while read -r file; do
        echo "Delete \"\$INSTDIR\\${file//\//\\}\""
    done >"$(dirname "$from")/remove.nsh"
    # Those within first.
    (cd "$from" && find . -mindepth 1 -type d -printf '%P\n' | sort -r) | while read -r folder; do
        echo "RMDir \"\$INSTDIR\\${folder//\//\\}\""
    done >>"$(dirname "$from")/remove.nsh"
}

# Starts a Windows program on a screen of its own, waits for a window of it that is as wide as the main
# window, leaves a picture and ends it.   shows_main_window EXE PICTURE
shows_main_window() {
    wine_end  # who runs already has no screen, nor has what he starts
    xvfb-run -a -s "-screen 0 1366x768x24" bash -c '
        "$1" "$2" >/dev/null 2>&1 &
        for second in $(seq 90); do
            sleep 1
            for window in $(xdotool search --onlyvisible --name Lapvane 2>/dev/null); do
                eval "$(xdotool getwindowgeometry --shell "$window" 2>/dev/null)"
                [ "${WIDTH:-0}" -ge 900 ] || continue
                sleep 3
                import -window root "$3"
                exit 0
            done
        done
        echo "no main window within $second s"
        exit 1' - "$WINE" "$1" "$2"
    local seen=$?
    wine_end
    return $seen
}

# What lies on the drive of Windows and in the registry of the person, less what wine itself writes.
windows_state() {
    wine_end
    (cd "$WINEPREFIX/drive_c" && find . -path ./windows -prune -o -path '*/Temp/*' -prune -o -print | sort)
    grep -i 'lapvane' "$WINEPREFIX/user.reg" "$WINEPREFIX/system.reg" | grep -vi 'com1' || true
}

person_file() { find "$WINEPREFIX/drive_c/users" -path "*/Local/Lapvane/$1"; }

try_packages() {
    local version stage=$PWD/build/windows-stage place pictures=$PWD/build/windows-pictures
    local uninstall='C:\users\'"$(id -un)"'\AppData\Local\Programs\Lapvane\uninstall.exe'
    version=$(basename "$stage"/lapvane-*)
    rm -rf "$pictures"
    mkdir -p "$pictures"
    export WINEPREFIX=$PWD/build/wine-packages  # where nothing was ever installed
    rm -rf "$WINEPREFIX"
    wine_prefix

    say "the .zip, in a folder with blanks and accents"
    place="$PWD/build/Corse è prove/di una stagione"
    rm -rf "$(dirname "$place")"
    mkdir -p "$place"
    (cd "$place" && cmake -E tar xf "$ZIP")
    shows_main_window "$place/$version/lapvane.exe" "$pictures/zip.png"
    local laps
    laps=$("$WINE" "$place/$version/lapvane-tool.exe" laps "$place/$version/sample/Esempio.csv" --csv | wc -l)
    diff <("$WINE" "$place/$version/lapvane-tool.exe" laps "$place/$version/sample/Esempio.csv" --csv) \
        <(build/release/bin/lapvane-tool laps build/release/bin/sample/Esempio.csv --csv)
    result "zip: starts from a folder with blanks and accents, lapvane-tool prints $laps lines, as on Linux"

    say "the installer"
    windows_state >"$stage/before.txt"
    timeout 300 "$WINE" "$SETUP" /S
    wine_end
    local program
    program=$(find "$WINEPREFIX/drive_c/users" -path '*/Programs/Lapvane/lapvane.exe')
    find "$WINEPREFIX/drive_c/users" -path '*/Start Menu/*Lapvane.lnk' | grep -q .
    grep -q 'Uninstall.*Lapvane' "$WINEPREFIX/user.reg"
    shows_main_window "$program" "$pictures/setup.png"
    # A newer one: what the person has not touched follows, the rest stays.
    local mine theirs
    theirs=$(person_file 'sample/*' | sort | sed -n 1p)
    mine=$(person_file 'sample/*' | sort | sed -n 2p)
    echo mine >"$mine"
    cp -r "$stage/$version" "$stage/newer"
    echo newer >"$stage/newer/sample/$(basename "$theirs")"
    echo newer >"$stage/newer/sample/$(basename "$mine")"
    installer_lists "$stage/newer"
    makensis -V1 -NOCD "-DVERSION=99.0.0" "-DFROM=$stage/newer" "-DOUT=$stage/newer.exe" \
        "-DICON=$PWD/cmake/install/lapvane.ico" "-DINSTALL=$stage/install.nsh" "-DREMOVE=$stage/remove.nsh" \
        "-DKILOBYTES=1" -X"SetCompress off" cmake/install/lapvane.nsi
    timeout 300 "$WINE" "$stage/newer.exe" /S
    shows_main_window "$program" "$pictures/upgrade.png"
    [ "$(cat "$theirs")" = newer ] && [ "$(cat "$mine")" = mine ]
    result "installer: start menu, entry among the programs, start, upgrade that keeps a changed file"

    "$WINE" "$uninstall" /S
    for _ in $(seq 60); do
        [ -e "$program" ] || break
        sleep 1
    done
    sleep 2
    wine_end
    [ "$(person_file '*')" = "$(printf '%s\n' "$(dirname "$mine")" "$mine")" ]
    rm -rf "$(dirname "$(dirname "$mine")")"
    windows_state >"$stage/after.txt"
    diff "$stage/before.txt" "$stage/after.txt"
    result "uninstaller: nothing left but the file that the person had changed"
}

record() {
    local qt
    qt=$(basename "$LAPVANE_QT_WINDOWS" | cut -d- -f2)
    {
        echo "$(date +%F), commit $(git rev-parse --short HEAD), $("$WINE" --version), Qt $qt:"
        cat "$RESULTS"
    } | sed 's/^/    /' >"$RESULTS.md"
    python3 - README.md "$RESULTS.md" <<'PYTHON'
import re, sys
readme, result = (open(name, encoding="utf-8").read() for name in sys.argv[1:])
begin, end = "<!-- scripts/windows.sh record -->\n", "<!-- end -->\n"
head, rest = readme.split(begin)
open(sys.argv[1], "w", encoding="utf-8").write(head + begin + "\n" + result + "\n" + end + rest.split(end, 1)[1])
PYTHON
}

case "${1:-all}" in
tour)
    wine_prefix
    play_tour "$2" "$3"
    ;;
on-screen)
    wine_prefix
    run_tests "windows, on a screen" lapvane_window_tests WINEQT_QPA_PLATFORM=windows
    ;;
build) build_windows ;;
package)
    mkdir -p build
    : >"$RESULTS"
    build_windows
    wine_prefix
    make_packages
    try_packages
    ;;
all | record)
    bad=0
    mkdir -p build
    : >"$RESULTS"
    build_windows
    try_all || bad=1
    make_packages
    try_packages || bad=1
    [ "${1:-all}" = record ] && record
    echo
    cat "$RESULTS"
    exit $bad
    ;;
*)
    sed -n '2,8s/^# \{0,1\}//p' "$0" >&2
    exit 2
    ;;
esac
