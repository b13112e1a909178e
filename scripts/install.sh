# Registers zentaro with the user's desktop, and takes it away again: the command, the entry in the menu with its
# icon, and the app's own scheme, so that links of it open there.
# shellcheck shell=bash

INSTALL_PACKAGES=(desktop-file-utils xdg-utils)

data_home() { printf '%s' "${XDG_DATA_HOME:-$HOME/.local/share}"; }

# configured NAME: a value of the optimised build's configuration.
configured() { sed -n "s/^$1:STRING=//p" "$root/build/release/CMakeCache.txt"; }

# installed_files: everything that an installation consists of, a path a line; folders of its own last.
installed_files() {
    local data identifier
    data=$(data_home)
    identifier=$(configured ZENTARO_BUNDLE_IDENTIFIER)
    printf '%s\n' "$HOME/.local/bin/zentaro" "$data/applications/$identifier.desktop" \
        "$data/icons/hicolor/scalable/apps/$identifier.svg" "$data/zentaro"
}

# The desktops' caches of who opens what. Entries are found without them by those that keep none.
refresh_desktop() { update-desktop-database -q "$(data_home)/applications" 2>/dev/null || true; }

# as_command PATH: as an entry's Exec line has it. What is not plain goes in quotes, where backslashes, quotes,
# dollars and backquotes are escaped, and then all backslashes once more, as in every value.
as_command() {
    if [[ $1 =~ ^[A-Za-z0-9/._+-]+$ ]]; then
        printf '%s' "$1"
    else
        sed -e 's/[\\"$`]/\\&/g' -e 's/\\/\\\\/g' -e 's/%/%%/g' -e 's/.*/"&"/' <<<"$1"
    fi
}

# make_entry COMMAND IDENTIFIER SCHEME: the entry of the menu, on stdout.
make_entry() {
    local line
    while IFS= read -r line; do
        line=${line//@identifier@/$2}
        line=${line//@scheme@/$3}
        case $line in
            Exec=*) printf '%s%s%s\n' "${line%%@command@*}" "$(as_command "$1")" "${line#*@command@}" ;;
            *) printf '%s\n' "$line" ;;
        esac
    done <"$root/packaging/zentaro.desktop.in"
}

install_for_user() {
    local command entry icon home scheme
    { read -r command && read -r entry && read -r icon && read -r home; } < <(installed_files)
    scheme=$(configured ZENTARO_URL_SCHEME)
    rm -rf "$home"
    mkdir -p "$home" "${command%/*}" "${entry%/*}" "${icon%/*}"
    cp "$root/build/release/zentaro" "$root/build/release/"zentaro_{film,http}.so "$home/"
    cp -RL "$root/resources" "$home/resources"
    ln -sf "$home/zentaro" "$command"
    cp "$root/packaging/icon.svg" "$icon"
    make_entry "$home/zentaro" "$(configured ZENTARO_BUNDLE_IDENTIFIER)" "$scheme" >"$entry"
    refresh_desktop
    xdg-mime default "${entry##*/}" "x-scheme-handler/$scheme"
    say "installed $command, which opens $scheme:// links"
    [[ :$PATH: == *:${command%/*}:* ]] || say "${command%/*} is not on your PATH"
}

uninstall_for_user() {
    local file list scheme entry
    scheme=$(configured ZENTARO_URL_SCHEME) entry=$(configured ZENTARO_BUNDLE_IDENTIFIER).desktop
    while IFS= read -r file; do
        rm -rf "$file"
    done < <(installed_files)
    refresh_desktop
    for list in "${XDG_CONFIG_HOME:-$HOME/.config}/mimeapps.list" "$(data_home)/applications/mimeapps.list"; do
        [[ ! -e $list ]] || sed -i --follow-symlinks -e "/^x-scheme-handler\/$scheme=/s/${entry//./\\.};\?//" \
            -e "/^x-scheme-handler\/$scheme=;*\$/d" "$list"
    done
    say "uninstalled; your settings stay"
}
