#!/usr/bin/env bash
# Benchmark of the layout readers (part of scripts/bench.sh): json2img and check_all on
# layouts of 12 to 100 MB against python3's json.load of the same files. The layouts are
# the bench page's controls repeated by build/bench/make_layout (keys, captions and ids of
# their own, each copy a screen further down; a page this large cannot be composed) in a
# project with the page's pictures and a logic file with every callback, so check_all
# passes it. Prints wall and CPU (user+sys) seconds, each tool's time as a multiple of
# json.load's, and peak memory (maximum RSS) also as a multiple of the file's size.
# Usage: scripts/bench_readers.sh [RUNS]   (RUNS per figure, default 3; medians)
set -euo pipefail
cd "$(dirname "$0")/.."
RUNS=${1:-3}
BUILD_DIR=${BUILD_DIR:-build}
EXE=templates/ui_blocks/compose
PAGE=examples/bench_page_1024x600.json

[ -x "$EXE" ] || bash scripts/setup.sh
command -v /usr/bin/time >/dev/null || { apt-get update -qq && apt-get install -y -qq time >/dev/null; }
cmake --build "$BUILD_DIR" --target make_layout >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

median() { sort -g | awk '{v[NR]=$1} END {print (NR % 2) ? v[(NR+1)/2] : (v[NR/2] + v[NR/2+1]) / 2}'; }

# run_stats NAME CMD... : RUNS runs; SEC (median wall s), CPU (median user+sys s), KB (median peak RSS)
run_stats() {
  local name=$1; shift
  : >"$work/$name.t"
  for _ in $(seq 1 "$RUNS"); do
    /usr/bin/time -f "%e %M %U %S" -o "$work/$name.one" "$@" >"$work/$name.out" 2>"$work/$name.err" ||
      { echo "failed: $*" >&2; cat "$work/$name.err" >&2; exit 1; }
    cat "$work/$name.one" >>"$work/$name.t"
  done
  SEC=$(awk '{print $1}' "$work/$name.t" | median)
  KB=$(awk '{print $2}' "$work/$name.t" | median)
  CPU=$(awk '{print $3 + $4}' "$work/$name.t" | median)
}

ratio() { awk -v a="$1" -v b="$2" 'BEGIN {printf "%.2f", (b > 0) ? a / b : 0}'; }
mib() { awk -v k="$1" 'BEGIN {printf "%.1f", k / 1024}'; }

echo "== json2img and check_all on large layouts, against python3's json.load (median of $RUNS) =="
"$EXE" "$PAGE" --project "$work/rp" >/dev/null
printf "%9s %9s | %-19s | %-33s | %-33s\n" "" "" "json.load" "json2img" "check_all"
printf "%9s %9s | %5s %5s %7s | %5s %5s %5s %5s %7s %4s | %5s %5s %5s %5s %7s %4s\n" layout_MB controls \
  wall cpu peak wall cpu xwall xcpu peak xsize wall cpu xwall xcpu peak xsize
for copies in 18 35 70 140; do
  r="$work/r$copies"
  mkdir -p "$r/ui" "$r/src/logic" "$r/resources"
  cp -r "$work/rp/resources/images" "$r/resources/"
  ctl=$("$BUILD_DIR/bench/make_layout" "$work/rp/ui/main.json" "$copies" "$r/ui/main.json" "$r/src/logic/mainLogic.cc")
  mb=$(awk -v b="$(stat -c %s "$r/ui/main.json")" 'BEGIN {printf "%.1f", b / 1048576}')
  run_stats py python3 -c 'import json,sys; json.load(open(sys.argv[1]))' "$r/ui/main.json"
  py_s=$SEC; py_c=$CPU; py_kb=$KB
  run_stats j "$EXE" json2img "$r/ui/main.json" --out "$work/j.png"
  j_s=$SEC; j_c=$CPU; j_kb=$KB
  run_stats c "$EXE" check_all "$r"
  grep -q "全部通过" "$work/c.out" || { echo "check_all found faults in the benchmark layout" >&2; exit 1; }
  printf "%9s %9d | %5.2f %5.2f %7s | %5.2f %5.2f %5s %5s %7s %4s | %5.2f %5.2f %5s %5s %7s %4s\n" "$mb" "$ctl" \
    "$py_s" "$py_c" "$(mib "$py_kb")" \
    "$j_s" "$j_c" "$(ratio "$j_s" "$py_s")" "$(ratio "$j_c" "$py_c")" "$(mib "$j_kb")" "$(ratio "$(mib "$j_kb")" "$mb")" \
    "$SEC" "$CPU" "$(ratio "$SEC" "$py_s")" "$(ratio "$CPU" "$py_c")" "$(mib "$KB")" "$(ratio "$(mib "$KB")" "$mb")"
  rm -rf "$r"
done
echo "(MiB; xwall, xcpu: the tool's time over json.load's; xsize: peak memory over the file's size."
echo " json2img draws the first screen without --report; check_all runs every rule on the project)"
