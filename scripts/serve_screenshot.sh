#!/usr/bin/env bash
# Refreshes docs/serve.png: runs the browser test of "compose serve" and keeps its screenshot.
set -euo pipefail
cd "$(dirname "$0")/.."
/usr/bin/python3 templates/ui_blocks/serve/serve_browser_test.py \
  --exe templates/ui_blocks/compose --source . --update-screenshot
