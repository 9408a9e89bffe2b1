# SPDX-License-Identifier: GPL-3.0-or-later
# shellcheck shell=bash disable=SC2034
# What run.sh and test.sh share: the package lists, who installs, who builds. Sourced, never run.

readonly BUILD_PACKAGES=(
    g++ cmake ninja-build ccache pkg-config
    qtbase5-dev libopencv-dev libtesseract-dev libleptonica-dev libmagickwand-6.q16-dev
    libsane-dev libusb-1.0-0-dev libjpeg62-turbo-dev libtiff-dev libpng-dev
    qttools5-dev qttools5-dev-tools
    libqpdf-dev libzip-dev libpoppler-qt5-dev
    libumockdev-dev umockdev
    weasyprint fonts-noto-cjk
)
# qtwayland5: a session without an X server; the two fonts and translations are data that no library pulls in.
readonly RUN_PACKAGES=(
    tesseract-ocr-chi-sim qttranslations5-l10n fonts-noto-cjk qtwayland5 libqt5svg5 qt5-image-formats-plugins
)
readonly DEMO_PACKAGES=(
    python3 xvfb openbox trayer xdotool imagemagick xauth
)
readonly TEST_PACKAGES=(
    sane-utils shellcheck util-linux
    qpdf poppler-utils unzip python3-pil img2pdf
)
# dpkg-dev finds the package's dependencies and build flags.
readonly PACKAGE_PACKAGES=(
    dpkg-dev
)
# What tests/package/ needs here; what it needs in the clean system is listed there.
readonly PACKAGE_TEST_PACKAGES=(
    debootstrap lintian
)
# The tools that bench/run_bench.py measures itself against; it goes on without one.
readonly BENCH_PACKAGES=(
    imagemagick unpaper tesseract-ocr tesseract-ocr-osd
)

say() { printf '== %s\n' "$*"; }

die() {
    printf '%s\n' "$*" >&2
    exit 1
}

as_root() {
    if [[ $(id -u) -eq 0 ]]; then
        "$@"
    elif command -v sudo >/dev/null; then
        sudo "$@"
    else
        die "This step needs root: run the script as root, or install sudo.  ($*)"
    fi
}

# The person behind the keyboard: with "sudo ./run.sh" that is not root.
invoking_user() {
    if [[ $(id -u) -eq 0 && -n ${SUDO_USER-} ]]; then
        printf '%s\n' "$SUDO_USER"
    else
        id -un
    fi
}

# Goes before a command that this person should run, so that nothing in the tree or the settings ends up
# owned by root.
as_user_prefix() {
    local user home
    user=$(invoking_user)
    AS_USER=(env)
    [[ $user != "$(id -un)" ]] || return 0
    home=$(getent passwd "$user" | cut -d: -f6)
    AS_USER=(runuser -u "$user" -- env HOME="$home" XDG_RUNTIME_DIR="/run/user/$(id -u "$user")")
}
as_user_prefix

missing_packages() {
    local package
    for package in "$@"; do
        [[ $(dpkg-query -W -f='${db:Status-Status}' "$package" 2>/dev/null) == installed ]] || printf '%s\n' "$package"
    done
}

# Installs what is missing; with everything there the network is not touched.
ensure_packages() {
    local missing
    mapfile -t missing < <(missing_packages "$@")
    [[ ${#missing[@]} -gt 0 ]] || return 0
    say "installing: ${missing[*]}"
    as_root apt-get update
    as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends "${missing[@]}"
}

# A build folder that was copied along with the tree still points to the old place.
drop_foreign_cache() {
    local cache=$1/CMakeCache.txt
    [[ -f $cache ]] || return 0
    grep -qxF "CMAKE_HOME_DIRECTORY:INTERNAL=$PWD" "$cache" || rm -f "$cache"
}

# build_preset PRESET FOLDER [TARGET...]: configures and builds in the current folder.
build_preset() {
    local preset=$1 folder=$2
    shift 2
    drop_foreign_cache "$folder"
    "${AS_USER[@]}" cmake --preset "$preset" --log-level=WARNING
    "${AS_USER[@]}" cmake --build "$folder" --target "${@:-all}"
}
