# Shared by ./run and ./test: packages that are missing get installed, presets get configured and built.
# Quiet while there is nothing to do; one line on stderr for each thing that is done, whole output on failure.
# shellcheck shell=bash
# shellcheck disable=SC2034  # the lists of packages are read by the scripts that source this file

# What building and starting zentaro takes: compiler, libraries of the hosts, Mesa's drivers, fonts.
RUN_PACKAGES=(
    g++ cmake ninja-build pkg-config nlohmann-json3-dev libfmt-dev
    libsdl2-dev libxcb1-dev libegl-dev libgles-dev libcairo2-dev libpango1.0-dev libpng-dev libjpeg62-turbo-dev
    libavcodec-dev libavformat-dev libavutil-dev libswscale-dev libcurl4-openssl-dev
    libegl-mesa0 libgl1-mesa-dri fonts-dejavu-core fonts-wqy-zenhei fonts-roboto-slab
)
# What the tests take on top: their library, a virtual display with a hand on it, checkers of the sources, the
# compiler of the fuzz targets with the libraries of its sanitizers.
TEST_PACKAGES=(
    libgtest-dev libgmock-dev libcpp-httplib-dev ffmpeg xvfb xauth openbox xdotool xclip x11-utils imagemagick
    clang-format clang-tidy shellcheck clang libclang-rt-dev
)
# What the web build takes: compiler, what draws its icons, the font that it ships. Its server needs Node, from wherever it comes.
WEB_PACKAGES=(emscripten cmake ninja-build nlohmann-json3-dev libfmt-dev librsvg2-bin
    fonts-roboto-slab)
command -v node >/dev/null && command -v npm >/dev/null || WEB_PACKAGES+=(nodejs npm)
# The browser of its tests.
WEB_TEST_PACKAGES=(chromium)

say() { printf 'zentaro: %s\n' "$*" >&2; }

# fail OUTPUT TEXT...: shows the whole output of a step that failed, then what it was.
fail() {
    printf '%s\n' "$1" >&2
    shift
    say "$@"
    return 1
}

apt_get() {
    local -a as_root=()
    ((EUID == 0)) || as_root=(sudo)
    "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get -y -qq -o DPkg::Lock::Timeout=120 \
        -o Dpkg::Use-Pty=0 "$@" </dev/null 2>&1
}

# need_packages NAME...: installs those that are missing. The package lists are fetched only when apt could not
# install from the ones it has. A system without dpkg is left to name what it lacks while it configures.
need_packages() {
    local package installed output
    local -a missing=()
    command -v dpkg-query >/dev/null || return 0
    # dpkg-query fails when a name is unknown to it; what counts is its list of the known ones.
    installed=$(dpkg-query --show --showformat='${db:Status-Status} ${Package}\n' "$@" 2>/dev/null || true)
    for package in "$@"; do
        [[ $'\n'$installed$'\n' == *$'\n'"installed $package"$'\n'* ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0
    if ((EUID != 0)) && ! command -v sudo >/dev/null; then
        say "packages are missing; install them as root with: apt-get install ${missing[*]}"
        return 1
    fi
    say "installing ${missing[*]}"
    apt_get install --no-install-recommends "${missing[@]}" >/dev/null && return 0
    output=$(apt_get update && apt_get install --no-install-recommends "${missing[@]}") ||
        fail "$output" "could not install ${missing[*]}"
}

# is_configured PRESET: whether its build folder is there and belongs to this tree, not to one it was copied from.
is_configured() {
    [[ -e $root/build/$1/build.ninja ]] &&
        grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$root" "$root/build/$1/CMakeCache.txt"
}

# configure PRESET [CMAKE ARGUMENT]...
configure() {
    local output
    local -a fresh=()
    is_configured "$1" || fresh=(--fresh)
    output=$(cd "$root" && cmake --preset "$@" "${fresh[@]}" 2>&1) ||
        fail "$output" "could not configure the preset $1"
}

# build PRESET [TARGET]...: says so once if anything is compiled or linked.
build() {
    local preset=$1 line output='' said=
    shift
    while IFS= read -r line; do
        output+=$line$'\n'
        if [[ -z $said && $line =~ ^\[[0-9]+/([0-9]+)\]\ (Building|Linking) ]]; then
            said=yes
            say "building $preset, ${BASH_REMATCH[1]} steps"
        fi
    done < <(ninja -C "$root/build/$preset" -j "$(nproc)" "$@" 2>&1)
    wait "$!" || fail "$output" "could not build the preset $preset"
}
