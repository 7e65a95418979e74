# To be sourced: installs the Debian packages that a script needs and that are missing.
# Works as root or through sudo; where neither is possible it says which packages to install.

need_packages() {
    missing=
    for package in "$@"; do
        status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
        [ "$status" = installed ] || missing="$missing $package"
    done
    [ -n "$missing" ] || return 0
    if [ "$(id -u)" = 0 ]; then
        as_root=
    elif command -v sudo >/dev/null && sudo -v; then
        as_root=sudo
    else
        echo "$0: these packages are missing, and without root or sudo they cannot be installed:$missing" >&2
        exit 1
    fi
    echo "$0: installing$missing"
    $as_root apt-get -q -o DPkg::Lock::Timeout=900 update >/dev/null
    # shellcheck disable=SC2086  # one word a package
    DEBIAN_FRONTEND=noninteractive $as_root apt-get -q -o DPkg::Lock::Timeout=900 install -y \
        --no-install-recommends $missing >/dev/null
}

# Node from elsewhere brings its own npm, beside which Debian's cannot be installed.
need_node() {
    command -v node >/dev/null && command -v npm >/dev/null || need_packages nodejs npm
}

# Debian's node packages lie where other builds of node do not look, and emscripten's optimiser needs one.
show_node_modules() {
    acorn=$(dpkg -L node-acorn 2>/dev/null | grep '/acorn/package.json$') || return 0
    NODE_PATH=$(dirname "$(dirname "$acorn")")
    export NODE_PATH
}

build_packages="g++ cmake ninja-build pkg-config"
docprep_packages="libjpeg62-turbo-dev libpng-dev libtiff-dev libwebp-dev libdeflate-dev zlib1g-dev libexif-dev \
    libcli11-dev nlohmann-json3-dev libsqlite3-dev libxxhash-dev"
sample_packages="python3-numpy python3-pil fontconfig fonts-dejavu-core fonts-liberation2 fonts-urw-base35"
shell_packages="bash zsh fish mandoc"  # what docprep prints for shells and for man is tried in them
python_packages="python3-dev pybind11-dev python3-numpy python3-setuptools python3-wheel mypy"
test_packages="libgtest-dev binutils make valgrind $shell_packages $sample_packages $python_packages \
    python3-jsonschema"
browser_packages="chromium"
wasm_packages="emscripten node-typescript"
aarch64_packages="g++-aarch64-linux-gnu qemu-user googletest"
consumer_packages="git dpkg-dev make openjdk-17-jdk-headless python3-venv python3-pip $python_packages"
bench_packages="libbenchmark-dev libyuv-dev libleptonica-dev libvips-dev libcgal-dev"
reference_packages="doxygen"
