#!/usr/bin/env bash
# Installs what the build needs (Debian packages) and builds compose into templates/ui_blocks/.
set -euo pipefail
cd "$(dirname "$0")/.."

PKGS="cmake g++ ninja-build pkg-config nlohmann-json3-dev libpng-dev libdeflate-dev libfreetype-dev libicu-dev libgtest-dev fonts-dejavu-core"
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

BUILD_DIR=${BUILD_DIR:-build}
cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=Release >/dev/null
cmake --build "$BUILD_DIR" -j "$(nproc)"
