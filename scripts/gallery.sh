#!/usr/bin/env bash
# Renders every example page with the tool itself and refreshes docs/gallery/<name>.png, then
# the contact sheets of the showcase page at every size (docs/gallery/showcase*.sizes.png)
# and two pages in the example theme (docs/gallery/<name>.dark.png).
# Expects a built templates/ui_blocks/compose (scripts/setup.sh builds it).
set -euo pipefail
cd "$(dirname "$0")/.."
COMPOSE=templates/ui_blocks/compose
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir -p docs/gallery
for spec in examples/*.json; do
  name=$(basename "$spec" .json)
  "$COMPOSE" "$spec" --project "$work/$name" --render >"$work/$name.log"
  cp "$work/$name/ui/main.render.png" "docs/gallery/$name.png"
  grep -E '^\s*\[(NOTE|X|!)\]' "$work/$name.log" >"docs/gallery/$name.notes.txt" || true
  echo "$name: $(grep -c . "docs/gallery/$name.notes.txt") note lines"
done

# One spec at every size in one run: the first screens, the whole scroll content, and the
# hidden dialog and toast shown.
sizes=320x240,480x272,800x480,1024x600
sheet() {  # sheet NAME [OPTIONS...]
  local name=$1
  shift
  "$COMPOSE" examples/showcase_800x480.json --project "$work/$name" --sizes "$sizes" --render "$@" >"$work/$name.log"
  cp "$work/$name/ui/main.sizes.png" "docs/gallery/$name.sizes.png"
  echo "$name: $(grep -m1 '^联系表' "$work/$name.log")"
}
sheet showcase
sheet showcase_full --render-full
sheet showcase_hidden --show-hidden

# The appliance blocks at every size, the dialog with its input field shown.
"$COMPOSE" examples/showcase_appliance_800x480.json --project "$work/appliance" \
  --sizes "$sizes,1280x800" --render --show-hidden >"$work/appliance.log"
cp "$work/appliance/ui/main.sizes.png" docs/gallery/showcase_appliance.sizes.png
echo "showcase_appliance: $(grep -m1 '^联系表' "$work/appliance.log")"

# Pages in the example theme (examples/themes/dark.json).
for name in settings_800x480 dashboard_1024x600; do
  "$COMPOSE" "examples/$name.json" --project "$work/$name.dark" --tokens examples/themes/dark.json --render \
    >"$work/$name.dark.log"
  cp "$work/$name.dark/ui/main.render.png" "docs/gallery/$name.dark.png"
  echo "$name in the dark theme"
done
