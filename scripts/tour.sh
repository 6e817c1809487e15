#!/usr/bin/env bash
# Plays the tour of a build (a preset's name) offscreen and leaves pictures and files in out/.
source "$(dirname "$0")/common.sh"

preset=${1:-release}
rm -rf out
mkdir -p out
use_picture_font
QT_QPA_PLATFORM=offscreen timeout 300 "build/$preset/bin/tour" out
echo "The tour left in out/:"
ls out
