# The checks of ./test that look at the sources instead of running them: form, scripts, and clang-tidy's faults.
# Each answers with its exit status and prints only what it found.
# shellcheck shell=bash

sources() {
    (cd "$root" && find src tests bench fuzz -type f \( -name '*.cpp' -o -name '*.h' \) "$@" | sort)
}

check_format() { (cd "$root" && sources | xargs -d '\n' clang-format --dry-run --Werror) >&2; }

check_scripts() { (cd "$root" && shellcheck -x run test .ci/run scripts/site.sh) >&2; }

# tidy_one SOURCE: leaves a stamp when it found nothing. The compiler's warnings are the build's, hence -w.
tidy_one() {
    local stamp="build/tidy/stamps/${1//\//+}" output
    touch "$stamp.begun"
    if ! output=$(clang-tidy --quiet -p build/tidy --extra-arg=-w "$1" 2>&1); then
        grep -vE '^[0-9]+ warnings? (treated as errors|generated)' <<<"$output" >&2
        return 1
    fi
    mv "$stamp.begun" "$stamp"
}
export -f tidy_one

# Sources whose stamp is older than they are, than any header, or than the choice of checks: the rest are as clean
# as they were. A fresh tree has no stamps. Tests are left out: they take half the time and hold nothing that users run; the
# web host is compiled by Emscripten, whose commands clang-tidy cannot follow.
stale_for_tidy() {
    local file stamp newest
    newest=$(sources -name '*.h' -printf '%T@ %p\n' | sort -n | tail -n 1)
    newest=$root/${newest#* }
    sources -name '*.cpp' | grep -vE '^tests/|^src/hosts/web/|/main_web' | while IFS= read -r file; do
        stamp="$root/build/tidy/stamps/${file//\//+}"
        [[ $stamp -nt $root/$file && $stamp -nt $newest && $stamp -nt $root/.clang-tidy ]] ||
            printf '%s\n' "$file"
    done
}

# The commands are those of a tree that is never built: clang cannot read gcc's precompiled headers, and gcc makes no
# fuzz targets.
check_tidy() {
    mkdir -p "$root/build/tidy/stamps"
    (cd "$root" && cmake --preset release -B build/tidy -DZENTARO_BUILD_TESTS=ON -DZENTARO_BUILD_FUZZERS=ON \
        -DCMAKE_DISABLE_PRECOMPILE_HEADERS=ON) >"$root/build/tidy/configure.log" 2>&1 || return 1
    (cd "$root" && stale_for_tidy | xargs -r -d '\n' -n 1 -P "$(nproc)" bash -c 'tidy_one "$1"' tidy)
}

# check_install: a user without any settings installs, opens a link the way desktops do, and uninstalls again.
check_install() {
    local home scheme identifier applications=.local/share/applications status
    home=$(mktemp -d) scheme=$(configured ZENTARO_URL_SCHEME) identifier=$(configured ZENTARO_BUNDLE_IDENTIFIER)
    (
        export HOME=$home
        unset XDG_DATA_HOME XDG_CONFIG_HOME XDG_RUNTIME_DIR DISPLAY WAYLAND_DISPLAY
        cd "$home" && "$root/run" --install 2>install.log &&
            desktop-file-validate "$applications/$identifier.desktop" &&
            [[ $(xdg-mime query default "x-scheme-handler/$scheme") == "$identifier.desktop" ]] &&
            grep -qF "x-scheme-handler/$scheme=$identifier.desktop" "$applications/mimeinfo.cache" &&
            .local/bin/zentaro "$scheme://julia/-1/-1/1/1" --snapshot view.png >view.log &&
            grep -qF /julia/-1.777778/-1.000000/ view.log &&
            "$root/run" --uninstall 2>>install.log && ! grep -rq "$identifier" .local .config &&
            [[ -z $(find .local .config -name "*$identifier*" -o -name "*zentaro*") ]]
    )
    status=$?
    ((status == 0)) || cat "$home/install.log" >&2
    rm -rf "$home"
    return "$status"
}
