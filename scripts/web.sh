# The page in the browser: built by Emscripten, served on this machine, tried in Chromium.
# Node's packages serve and test it; the page itself takes nothing from them.
# shellcheck shell=bash

# need_node_modules: those of web/package-lock.json, exactly.
need_node_modules() {
    local output
    [[ $root/web/node_modules/.package-lock.json -nt $root/web/package-lock.json ]] && return
    say "installing what serves and tests the page"
    output=$(cd "$root/web" && npm ci --ignore-scripts --no-audit --no-fund 2>&1) ||
        fail "$output" "could not install the packages of web/package-lock.json"
}

build_site() {
    need_packages "${WEB_PACKAGES[@]}" || return
    is_configured web || configure web || return
    # Emscripten's own scripts need packages of Node that Debian keeps there.
    NODE_PATH=/usr/share/nodejs build web zentaro_web
}

# serve_site [--port N] [--lan]: does not come back.
serve_site() {
    local -a options=()
    local usage="web takes --port N (1 to 65535) and --lan"
    while (($#)); do
        case $1 in
            --lan) options+=(--lan) ;;
            --port)
                [[ ${2-} =~ ^[0-9]{1,5}$ ]] && ((10#$2 >= 1 && 10#$2 <= 65535)) || { say "$usage" && exit 2; }
                options+=(--port "$((10#$2))")
                shift
                ;;
            *) say "$usage, not '$1'" && exit 2 ;;
        esac
        shift
    done
    build_site && need_node_modules || exit 1
    say "build/web/site holds the whole page, for any static host: docs/hosts.md says how. Ctrl+C ends this one:"
    exec node "$root/web/serve.mjs" "${options[@]}" "$root/build/web/site"
}

# test_page [NODE ARGUMENT]...: the page in Chromium; pictures of it are left in build/web/pictures.
test_page() { (cd "$root/web" && node --test --test-concurrency=2 "$@" tests/*.test.mjs); }
