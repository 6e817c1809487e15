# Windows programs on this machine: a wine of their own, and serial ports of it. Sourced behind
# common.sh, not run.

export WINEDEBUG=${WINEDEBUG:--all} WINEPREFIX=${WINEPREFIX:-$PWD/build/wine}
WINE=$(command -v wine64 || command -v wine64-stable || echo /usr/lib/wine/wine64)

# Makes the prefix, once.
wine_prefix() {
    [ -f "$WINEPREFIX/system.reg" ] && return 0
    mkdir -p "$(dirname "$WINEPREFIX")"
    timeout 300 "$WINE" wineboot --init >/dev/null 2>&1
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
