#!/usr/bin/env bash
# How many of the faults in tests/faults the tests find, by room, and which live. Without options all of them
# (a quarter of an hour); --ten COMMIT ten that the text picks, --only TEXT those of a file; --check only
# sees that every entry still fits the sources.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_HOUSE[@]}"
for option in "$@"; do
    [ "$option" != --check ] || exec python3 scripts/faults.py "$@"
done
install_packages "${PACKAGES_BUILD[@]}" "${PACKAGES_TEST[@]}"
exec python3 scripts/faults.py "$@"
