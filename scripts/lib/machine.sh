# Sets a machine up: sourced by the commands in scripts/. Nothing here asks a question.

project_root="$(cd "$(dirname "${BASH_SOURCE[0]}")/../.." && pwd)"

say() { printf '%s\n' "$*"; }
fail() { printf '%s: %s\n' "$(basename "$0")" "$*" >&2; exit 1; }

# What building and running needs, and what the tests need on top; the same things under each
# system's names.
debian_build=(
    build-essential cmake ninja-build pkg-config
    qtbase5-dev qttools5-dev qttools5-dev-tools libqwt-qt5-dev libqt5sql5-sqlite libqt5sql5-psql
    libmosquitto-dev mosquitto
    libzip-dev python3
    fonts-noto-cjk
)
debian_test=(
    libgtest-dev libgmock-dev libbenchmark-dev libsqlite3-dev
    mosquitto-clients openssl postgresql sqlite3 python3-paho-mqtt python3-jsonschema python3-yaml
    xvfb xauth xdotool x11-utils dbus at-spi2-core weston qtwayland5 faketime util-linux
    clang clang-format clang-tidy abigail-tools doxygen reuse git
    dpkg-dev lintian appstream desktop-file-utils man-db mmdebstrap systemd
)
homebrew_build=(cmake ninja pkg-config qt@5 qwt-qt5 mosquitto libzip)
homebrew_test=(python3 googletest google-benchmark postgresql@15 libfaketime clang-format doxygen reuse)

as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    elif command -v sudo >/dev/null && sudo -n true 2>/dev/null; then
        sudo -n "$@"
    else
        fail "packages are missing, and neither root nor sudo without a password is there to install them;" \
            "install: ${missing[*]}"
    fi
}

# install_debian PACKAGE...: installs those that are not there yet.
install_debian() {
    missing=()
    local package
    for package in "$@"; do
        dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
    done
    [ ${#missing[@]} -gt 0 ] || return 0
    say "Installing with apt-get: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    as_root apt-get update -qq || fail "apt-get update failed; is the machine online?"
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null \
        || fail "apt-get could not install: ${missing[*]}"
}

# install_homebrew FORMULA...: the same on macOS.
install_homebrew() {
    command -v brew >/dev/null || fail "Homebrew is needed to install: $*"
    local formula
    for formula in "$@"; do
        brew list --versions "$formula" >/dev/null 2>&1 && continue
        say "Installing with Homebrew: $formula"
        brew install --quiet "$formula" || fail "Homebrew could not install $formula"
    done
    CMAKE_PREFIX_PATH="$(brew --prefix qt@5)${CMAKE_PREFIX_PATH:+:$CMAKE_PREFIX_PATH}"
    export CMAKE_PREFIX_PATH
}

# set_machine_up build|package|test: once, also when one command calls another
set_machine_up() {
    [ -z "${machine_is_up:-}" ] || return 0
    if command -v apt-get >/dev/null; then
        local packages=("${debian_build[@]}")
        [ "$1" = build ] || packages+=("${debian_test[@]}")
        install_debian "${packages[@]}"
    elif [ "$(uname)" = Darwin ]; then
        install_homebrew "${homebrew_build[@]}"
        [ "$1" = build ] || install_homebrew "${homebrew_test[@]}"
    else
        say "Neither apt-get nor Homebrew here: going on with what is installed."
    fi
    if command -v ccache >/dev/null; then
        export CMAKE_CXX_COMPILER_LAUNCHER="${CMAKE_CXX_COMPILER_LAUNCHER:-ccache}"
    fi
    export machine_is_up=1
}

# Programs keep the bus socket in the user's runtime directory, which a bare login lacks.
provide_runtime_dir() {
    [ -z "${XDG_RUNTIME_DIR:-}" ] && [ "$(uname)" != Darwin ] || return 0
    export XDG_RUNTIME_DIR="/tmp/runtime-$(id -un)"
    mkdir -p -m 700 "$XDG_RUNTIME_DIR"
}

processors() { nproc 2>/dev/null || sysctl -n hw.ncpu; }

# logged COMMAND...: quiet when all is well, the whole log when not.
logged() {
    local log
    log="$(mktemp)"
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        fail "'$*' failed, see above"
    fi
    rm -f "$log"
}

# configure PRESET
configure() { (cd "$project_root" && logged cmake --preset "$1"); }

# configure_and_build PRESET [--target TARGET]
configure_and_build() {
    local preset="$1"
    shift
    say "Building ($preset) ..."
    configure "$preset"
    (cd "$project_root" && logged cmake --build --preset "$preset" --parallel "$(processors)" "$@")
}

# release_14_of clang-format|clang-tidy: the program's name; fails where only other releases are.
release_14_of() {
    local program
    for program in "$1-14" "$1"; do
        case "$("$program" --version 2>/dev/null)" in
        *"version 14."*) echo "$program"; return ;;
        esac
    done
    return 1
}
