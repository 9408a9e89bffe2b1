#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Makes the Debian package: build-package/qwd200_VERSION_ARCH.deb, the same bytes from the same commit.
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
# shellcheck source=scripts/lib.sh
source scripts/lib.sh

# Debian's hardening flags; the build folder's name stays out of the binaries. Nor may ccache shorten names: they are part of the
# debugging information, of which the linker makes the build's id.
export_build_flags() {
    export DEB_BUILD_MAINT_OPTIONS=hardening=+all
    CXXFLAGS="$(dpkg-buildflags --get CXXFLAGS) $(dpkg-buildflags --get CPPFLAGS)"
    LDFLAGS=$(dpkg-buildflags --get LDFLAGS)
    export CXXFLAGS LDFLAGS CCACHE_BASEDIR=
    SOURCE_DATE_EPOCH=$(dpkg-parsechangelog -l packaging/deb/changelog -S Timestamp)
    export SOURCE_DATE_EPOCH
}

main() {
    ensure_packages "${BUILD_PACKAGES[@]}" "${PACKAGE_PACKAGES[@]}"
    export_build_flags
    umask 022
    build_preset package build-package
    rm -f build-package/*.deb
    (cd build-package && "${AS_USER[@]}" cpack -G DEB >/dev/null)
    ls build-package/*.deb
}

main "$@"
