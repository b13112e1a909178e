#!/usr/bin/env bash
# Puts the page around the web build: site.sh FOLDER, which holds zentaro.js and zentaro.wasm already.
# Run by the build: the icons are drawn, and the service worker's store is named after what it keeps.
set -euo pipefail

root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
site=$1

# icon NAME SIZE [RSVG ARGUMENT]...
icon() {
    local name=$1 size=$2
    shift 2
    rsvg-convert --width "$size" --height "$size" "$@" --output "$site/icons/$name.png" "$root/packaging/icon.svg"
}

mkdir -p "$site/icons"
cp "$root"/web/*.html "$root"/web/*.js "$root"/web/*.css "$root"/web/*.webmanifest "$site"
icon icon-192 192
icon icon-512 512
# Systems cut this one to their own shape: the background goes on to its edges.
icon maskable-512 512 --background-color '#0c1030'

version=$(cd "$site" && find . -type f ! -name '*.gz' ! -name '*.br' -print0 | LC_ALL=C sort -z |
    xargs -0 sha256sum | sha256sum | cut -c 1-16)
sed -i "s/@ZENTARO_WEB_VERSION@/$version/" "$site/sw.js"
