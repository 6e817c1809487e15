# Windows programs on this machine: a wine of their own, and serial ports of it. Sourced behind
# common.sh, not run.

# A program that crashes ends; there is no debugger to wait for.
export WINEDLLOVERRIDES="winedbg.exe=d"
export WINEDEBUG=${WINEDEBUG:--all} WINEPREFIX=${WINEPREFIX:-$PWD/build/wine}
WINE=$(command -v wine64 || command -v wine64-stable || echo /usr/lib/wine/wine64)

# Makes the prefix, once.
wine_prefix() {
    [ -f "$WINEPREFIX/system.reg" ] && return 0
    mkdir -p "$(dirname "$WINEPREFIX")"
    timeout 300 "$WINE" wineboot --init >/dev/null 2>&1
    "$WINE" reg add 'HKCU\Software\Wine' /v Version /t REG_SZ /d win10 /f >/dev/null
    # The letters of Windows' own windows are not to be had. These are wider than those, so that what
    # fits here fits there.
    local name
    for name in "MS Shell Dlg" "MS Shell Dlg 2" "Segoe UI" Tahoma "MS Sans Serif" "Microsoft Sans Serif"; do
        "$WINE" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v "$name" /t REG_SZ /d "DejaVu Sans" /f >/dev/null
    done
    "$WINE" reg add 'HKCU\Software\Wine\Fonts\Replacements' /v Arial /t REG_SZ /d "Liberation Sans" /f >/dev/null
    wine_end
}

# wine_port NUMBER PATH: COMnumber is that file, a terminal or a link to one. Read when wine starts.
wine_port() {
    timeout 60 "$WINE" reg add 'HKLM\Software\Wine\Ports' /v "COM$1" /t REG_SZ /d "$2" /f >/dev/null
    wine_end
}

# Ends what wine has left running, and waits for it.
wine_end() {
    local server
    server=$(command -v wineserver || echo /usr/lib/wine/wineserver)
    timeout 60 "$server" -k >/dev/null 2>&1 || true
    timeout 60 "$server" -w >/dev/null 2>&1 || true
}
