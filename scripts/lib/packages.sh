# Sourced by the scripts of this folder, never run: Debian packages, installed only where they are missing.

# ensure_packages <package>..
# Installs those of the named Debian packages that are missing, with sudo where the caller isn't root, and says so.
# When nothing is missing it says nothing and touches nothing.
ensure_packages() {
    local missing=() package
    if ! command -v dpkg-query > /dev/null || ! command -v apt-get > /dev/null; then
        echo "This is no Debian system; please see to it yourself that these are installed: $*" >&2
        return 0
    fi
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2> /dev/null) == installed ]] || missing+=("$package")
    done
    ((${#missing[@]})) || return 0

    local as_root=()
    if ((EUID != 0)); then
        if ! command -v sudo > /dev/null; then
            echo "These packages are missing, and there is neither root nor sudo to install them: ${missing[*]}" >&2
            return 1
        fi
        as_root=(sudo)
        echo "Installing with sudo apt-get (it may ask for your password): ${missing[*]}" >&2
    else
        echo "Installing with apt-get: ${missing[*]}" >&2
    fi
    local noninteractive=(env DEBIAN_FRONTEND=noninteractive)
    "${as_root[@]}" "${noninteractive[@]}" apt-get update -qq >&2 &&
        "${as_root[@]}" "${noninteractive[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}" >&2 < /dev/null
}

# What every build needs, whoever asks for it.
build_packages=(g++ cmake ninja-build libzstd-dev)
# What the page of web/ needs besides: emscripten comes with Node.
web_packages=(emscripten)
# What scripts/screenshots and tests/integration/test_clients.py let people's clients show.
client_packages=(xvfb xboard pychess scid imagemagick xterm xdotool fonts-dejavu-core)
