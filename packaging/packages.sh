# shellcheck shell=bash
# Sourced by demo.sh and test.sh: the Debian packages they need, and how missing ones are installed.

build_packages=(g++ cmake ninja-build libtinyxml-dev nlohmann-json3-dev libcli11-dev)
# shellcheck disable=SC2034 # used by test.sh
test_packages=("${build_packages[@]}" googletest build-essential pkg-config debhelper devscripts lintian blhc doxygen python3-kconfiglib python3 binutils locales
    clang-format-14 clang-tidy-14 clang-14 libclang-rt-14-dev cppcheck shellcheck gcovr python3-cram python3-jsonschema jq
    valgrind libxml2-utils
    g++-arm-linux-gnueabihf qemu-user libtinyxml-dev:armhf libbenchmark-dev)
# shellcheck disable=SC2034 # used by test.sh, for the reference page
page_packages=(chromium chromium-driver python3-selenium)
# shellcheck disable=SC2034 # used by bench/run.sh; the peers and the plot, too
bench_packages=(libbenchmark-dev libpugixml-dev libxml2-dev libssl-dev nanopb libnanopb-dev protobuf-compiler
    valgrind python3 python3-matplotlib)

# Without an architecture in its name, a package of the machine's own counts, and one for all; a library
# that is only there for a foreign architecture does not.
is_installed() { # PACKAGE
    local name names=("$1")
    [[ $1 == *:* ]] || names=("$1:$(dpkg --print-architecture)" "$1:all")
    for name in "${names[@]}"; do
        [ "$(dpkg-query -W -f '${db:Status-Status}' "$name" 2>/dev/null)" = installed ] && return 0
    done
    return 1
}

as_root() {
    if [ "$(id -u)" = 0 ]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        echo "Not root and no sudo: cannot run '$*'." >&2
        return 1
    fi
}

# Installs what is missing of the packages given; says nothing when nothing is.
install_packages() {
    local package missing=()
    if ! command -v dpkg-query >/dev/null; then
        echo "Not a Debian system: these packages are taken to be there: $*" >&2
        return 0
    fi
    for package in "$@"; do
        is_installed "$package" || missing+=("$package")
    done
    [ "${#missing[@]}" -gt 0 ] || return 0
    echo "Installing: ${missing[*]}"
    if [[ " ${missing[*]} " == *:armhf* ]] && ! dpkg --print-foreign-architectures | grep -qx armhf; then
        as_root dpkg --add-architecture armhf || return 1
    fi
    # An index that is incomplete for the foreign architecture makes the update fail although all that
    # is needed can be installed, so only the installation decides.
    as_root apt-get -qq update >/dev/null 2>&1 || true
    if ! as_root env DEBIAN_FRONTEND=noninteractive apt-get -qq -y --no-install-recommends install \
        "${missing[@]}" >/dev/null; then
        echo "Could not install: ${missing[*]}" >&2
        echo "Install them by hand (apt-get install ${missing[*]}) and start again." >&2
        return 1
    fi
}
