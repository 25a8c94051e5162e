#!/usr/bin/env bash
# Installs, builds and runs the whole test suite, then the sanitizer pass (scripts/sanitize.sh)
# and a short run of every fuzz target (scripts/fuzz.sh, FUZZ_SECONDS each, default 30).
# TESTS_ONLY=1 stops after the test suite of the normal build.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh --with-clang --all
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j "$(nproc)"
[ -n "${TESTS_ONLY:-}" ] && exit 0
bash scripts/sanitize.sh
bash scripts/fuzz.sh "${FUZZ_SECONDS:-30}"
