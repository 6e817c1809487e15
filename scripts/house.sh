#!/usr/bin/env bash
# The rooms of the source tree and the arrows between them, and the globals of its headers: fails on an
# include that runs upward, a circle, a file of no room, a global that the tests do not put back.
source "$(dirname "$0")/common.sh"

install_packages "${PACKAGES_HOUSE[@]}"
python3 scripts/house.py
