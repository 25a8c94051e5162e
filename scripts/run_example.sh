#!/usr/bin/env bash
# Installs what is missing, builds compose (and nothing else), and composes the bundled
# settings page with a rendered preview and the project checks.
# Usage: scripts/run_example.sh [OUT_DIR]
set -euo pipefail
cd "$(dirname "$0")/.."
OUT_DIR=${1:-out/example}
bash scripts/setup.sh
mkdir -p "$OUT_DIR"
templates/ui_blocks/compose examples/settings_800x480.json --project "$OUT_DIR" --render --check
echo "output in $(cd "$OUT_DIR" && pwd)"
