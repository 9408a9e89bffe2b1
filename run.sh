#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Installs what is missing, builds, installs the program and starts it. See usage().
set -euo pipefail
readonly CALLED_FROM=$PWD
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
# shellcheck source=scripts/lib.sh
source scripts/lib.sh

readonly INSTALL_ROOT=/opt/zarn/Scanner/QWD200
readonly SAVE_FOLDER=/home/ScanDoc
readonly SCANNER_VENDOR=0efd
readonly SCANNER_PRODUCT=002a
# An absolute path to a folder that is already built, for tests: nothing is installed or built then.
readonly BUILD=${QWD200_BUILD:-$PWD/build}

usage() {
    cat <<TEXT
./run.sh            install packages, build, install into $INSTALL_ROOT/ and start the program:
                    with the real scanner when one is attached, else with the virtual one
./run.sh --demo     scan the sample sheets without a display and print what was saved; touches nothing
                    outside the build folder (also what happens when there is no display)
TEXT
    [[ ! -x /usr/bin/python3 ]] || /usr/bin/python3 "$PWD/scripts/demo" --help
}

has_display() { [[ -n ${DISPLAY-} || -n ${WAYLAND_DISPLAY-} ]]; }

wants() {
    local wanted=$1 argument
    shift
    for argument in "$@"; do
        [[ $argument != "$wanted" ]] || return 0
    done
    return 1
}

prepare() {
    [[ -z ${QWD200_BUILD-} ]] || return 0
    ensure_packages "${BUILD_PACKAGES[@]}" "${RUN_PACKAGES[@]}" "$@"
    build_preset release "$BUILD" all sample-sheets
}

# Changes whenever another build, another tree or another user installs.
install_stamp() {
    invoking_user
    printf '%s\n' "$PWD"
    sha256sum "$BUILD/src/app/qwd200" "$BUILD"/src/imageconvert/*.so "$BUILD/companions/zip-ofd/zip-ofd" | cut -d' ' -f1
}

readonly WRITABLE_FOLDERS=("$INSTALL_ROOT" "$INSTALL_ROOT"/{scanModeFile,tempfiles,tempTxtFiles})

is_installed() {
    [[ $(cat "$INSTALL_ROOT/lib/.installed" 2>/dev/null) == "$(install_stamp)" ]] || return 1
    local folder
    for folder in "${WRITABLE_FOLDERS[@]}" "$SAVE_FOLDER"; do
        "${AS_USER[@]}" test -w "$folder" || return 1
    done
}

# The program keeps its settings, page files and state below the install root, so that part of it belongs to
# the person who uses the scanner; the programs and libraries do not.
give_to_user() {
    local owner group
    owner=$(invoking_user)
    group=$(id -gn "$owner")
    as_root install -d "${WRITABLE_FOLDERS[@]}"
    as_root find "$INSTALL_ROOT" -path "$INSTALL_ROOT/bin" -prune -o -path "$INSTALL_ROOT/lib" -prune -o \
        -path "$INSTALL_ROOT/zip-ofd" -prune -o -path "$INSTALL_ROOT/pdfReader" -prune -o \
        -exec chown -h "$owner:$group" {} +
    [[ -d $SAVE_FOLDER ]] || as_root install -d -o "$owner" -g "$group" "$SAVE_FOLDER"
    "${AS_USER[@]}" test -w "$SAVE_FOLDER" || say "note: $SAVE_FOLDER belongs to someone else; choose another save folder in the program"
}

# Lets the user at the seat open the scanner's USB device; without udev (a container) there is nothing to do.
install_udev_rule() {
    local rule=/etc/udev/rules.d/60-qwd200.rules
    [[ -d /etc/udev ]] || return 0
    cmp -s packaging/60-qwd200.rules "$rule" && return 0
    as_root install -D -m 644 packaging/60-qwd200.rules "$rule"
    if command -v udevadm >/dev/null && [[ -S /run/udev/control ]]; then
        as_root udevadm control --reload
        as_root udevadm trigger --subsystem-match=usb --attr-match=idVendor=$SCANNER_VENDOR
    fi
}

install_program() {
    [[ -n $(missing_packages qwd200) ]] || die "The package qwd200 is installed: start it from the menu, or remove it (sudo apt remove qwd200)."
    install_udev_rule
    if is_installed; then
        return
    fi
    say "installing into $INSTALL_ROOT/"
    as_root cmake --install "$BUILD" --prefix "$INSTALL_ROOT" >/dev/null
    give_to_user
    install_stamp | as_root tee "$INSTALL_ROOT/lib/.installed" >/dev/null
}

# Looks at the USB devices only: asking every SANE driver takes many seconds.
scanner_attached() {
    local device
    for device in /sys/bus/usb/devices/*; do
        if [[ $(cat "$device/idVendor" 2>/dev/null) == "$SCANNER_VENDOR" &&
            $(cat "$device/idProduct" 2>/dev/null) == "$SCANNER_PRODUCT" ]]; then
            return 0
        fi
    done
    return 1
}

start_program() {
    local program=$INSTALL_ROOT/bin/qwd200
    if scanner_attached; then
        say "starting with the attached scanner"
        exec "${AS_USER[@]}" "$program"
    else
        say "no scanner attached: starting with the virtual one, its feeder holds the sample sheets"
        exec "${AS_USER[@]}" "$BUILD/vscan/vscan" run --feeder "$BUILD/samples" -- "$program"
    fi
}

# Relative folders among the arguments count from where the caller stands.
run_demo() {
    local demo=$PWD/scripts/demo
    cd "$CALLED_FROM"
    exec "${AS_USER[@]}" /usr/bin/python3 "$demo" --build "$BUILD" "$@"
}

main() {
    if wants --help "$@" || wants -h "$@"; then
        usage
    elif wants --demo "$@"; then
        prepare "${DEMO_PACKAGES[@]}" >&2
        run_demo "$@"
    elif has_display; then
        [[ $# -eq 0 ]] || die "Unknown argument: $1  (see ./run.sh --help)"
        prepare
        install_program
        start_program
    else
        prepare "${DEMO_PACKAGES[@]}"
        install_program
        say "no display: running the demo"
        run_demo --demo "$@"
    fi
}

main "$@"
