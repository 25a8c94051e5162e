#!/usr/bin/env bash
# Installs, builds and runs the whole test suite.
set -euo pipefail
cd "$(dirname "$0")/.."
bash scripts/setup.sh
ctest --test-dir "${BUILD_DIR:-build}" --output-on-failure -j "$(nproc)"
