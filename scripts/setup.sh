#!/usr/bin/env bash
# Installs what the build needs (Debian packages) and builds compose and compose-serve into
# templates/ui_blocks/ (the tools json2img and check_all are subcommands of compose).
# --all builds every target, the tests included; --with-clang also installs clang.
set -euo pipefail
cd "$(dirname "$0")/.."

PKGS="cmake g++ ninja-build ccache pkg-config nlohmann-json3-dev libsimdjson-dev libpng-dev libdeflate-dev libfreetype-dev libicu-dev libgit2-dev libgtest-dev fonts-dejavu-core python3-jsonschema
  libcpp-httplib-dev chromium chromium-driver python3-selenium fonts-droid-fallback"
# scripts/sanitize.sh and scripts/fuzz.sh build with clang: "setup.sh --with-clang".
CLANG_PKGS="clang libclang-rt-14-dev"
TARGETS="--target compose compose_server"
for arg in "$@"; do
  case "$arg" in
    --with-clang) PKGS="$PKGS $CLANG_PKGS" ;;
    --all) TARGETS="" ;;
    *) echo "usage: scripts/setup.sh [--with-clang] [--all]" >&2; exit 2 ;;
  esac
done
missing=""
for p in $PKGS; do
  dpkg -s "$p" >/dev/null 2>&1 || missing="$missing $p"
done
if [ -n "$missing" ]; then
  echo "installing:$missing"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq $missing >/dev/null
fi

[ -n "${SKIP_BUILD:-}" ] && exit 0

BUILD_DIR=${BUILD_DIR:-build}
# ccache with paths relative to the checkout: a second checkout reuses the first one's objects.
export CCACHE_BASEDIR="$PWD"
# Precompiled headers are cacheable only with these relaxed checks.
export CCACHE_SLOPPINESS=${CCACHE_SLOPPINESS:-pch_defines,time_macros,include_file_mtime,include_file_ctime}
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
# Only what is run, unless --all: the 16 test programs take longer to build than compose.
cmake --build "$BUILD_DIR" -j "$(nproc)" $TARGETS
