#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# Tests everything, each test once: the programs as users get them with the whole-program tests and the rules, then
# the unit tests with sanitizers.
#   ./test.sh           both stages            ./test.sh --quick   all tests in one build without sanitizers
set -euo pipefail
cd "$(dirname "$(readlink -f "${BASH_SOURCE[0]}")")"
# shellcheck source=scripts/lib.sh
source scripts/lib.sh

# Whole-program tests wait for the scanner half of the time: one more than there are cores.
run_tests() {
    local folder=$1
    shift
    "${AS_USER[@]}" ctest --test-dir "$folder" --parallel "$(($(nproc) + 1))" --output-on-failure --no-tests=error "$@"
}

# Qt and fontconfig keep caches until the process ends: those are not leaks of ours.
with_sanitizers() {
    export ASAN_OPTIONS=detect_leaks=1:abort_on_error=0
    export UBSAN_OPTIONS=print_stacktrace=1
    export LSAN_OPTIONS=suppressions=$PWD/scripts/lsan.supp:print_suppressions=0
    "$@"
}

main() {
    local failed=0
    ensure_packages "${BUILD_PACKAGES[@]}" "${RUN_PACKAGES[@]}" "${DEMO_PACKAGES[@]}" "${TEST_PACKAGES[@]}"
    if [[ ${1-} == --quick ]]; then
        say "all tests"
        build_preset dev build-dev all sample-sheets
        run_tests build-dev || failed=1
        return "$failed"
    fi
    say "whole programs and rules"
    build_preset programs build-programs all sample-sheets
    run_tests build-programs || failed=1
    say "unit tests with address and undefined-behaviour sanitizers"
    build_preset asan build-asan
    with_sanitizers run_tests build-asan --label-exclude 'program|rules' || failed=1
    return "$failed"
}

main "$@"
