#!/usr/bin/env bash
# Puts the page around the web build: site.sh FOLDER [ORIGIN]. The folder holds zentaro.js and zentaro.wasm already;
# the origin is that of the store, which the page may then ask.
# Run by the build: the icons are drawn, and the service worker learns which files to keep and their version.
set -euo pipefail

root=$(dirname -- "$(dirname -- "$(readlink -f -- "${BASH_SOURCE[0]}")")")
site=$1
store=${2-}
fonts=/usr/share/fonts/opentype/roboto/slab

# icon NAME SIZE [RSVG ARGUMENT]...
icon() {
    local name=$1 size=$2
    shift 2
    rsvg-convert --width "$size" --height "$size" "$@" --output "$site/icons/$name.png" "$root/packaging/icon.svg"
}

mkdir -p "$site/icons" "$site/fonts"
find "$site" -maxdepth 1 -type f ! -name 'zentaro.*' -delete
cp "$root"/web/*.html "$root"/web/*.js "$root"/web/*.css "$root"/web/*.webmanifest "$site"
[[ -z $store ]] || sed -i "s|connect-src 'self'|& $store|" "$site/index.html"
icon icon-192 192
icon icon-512 512
# Systems cut this one to their own shape: the background goes on to its edges.
icon maskable-512 512 --background-color '#0c1030'
# The tour's font, which the page loads with its first caption; its licence goes with it.
cp "$fonts/RobotoSlab-Bold.otf" "$site/fonts/roboto-slab-bold.otf"
cp /usr/share/doc/fonts-roboto-slab/copyright "$site/fonts/roboto-slab-licence.txt"

kept=$(cd "$site" && find . \( -name '*.js' -o -name '*.css' -o -name '*.wasm' -o -name '*.webmanifest' -o -name '*.otf' \
    -o -name icon-192.png \) ! -name sw.js -printf "'/%P'\n" | LC_ALL=C sort | paste -s -d ,)
version=$(cd "$site" && find . -type f ! -name '*.gz' ! -name '*.br' -print0 | LC_ALL=C sort -z |
    xargs -0 sha256sum | sha256sum | cut -c 1-16)
sed -i "s/@ZENTARO_WEB_VERSION@/$version/; s|@ZENTARO_WEB_FILES@|$kept|" "$site/sw.js"
