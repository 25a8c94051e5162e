#!/usr/bin/env bash
# Benchmarks of compose (not tests): prints tables of whole-run figures.
#  1. scaling: pages of 100 / 1,000 / 5,000 / 20,000 blocks (the bench page's blocks
#     repeated), --json-only: median time, peak memory, memory per control, growth exponent;
#     then json2img and check_all on layouts of 12 to 100 MB (the bench page's controls
#     repeated by bench/make_layout) against python3's json.load of the same files;
#  2. the bench page: fresh run, rerun into the same project, --json-only; picture bytes;
#  3. picture emission against a plain libpng floor (bench/emit_bench);
#  4. the live preview server (scripts/bench_serve.sh): answer times under 16 polling
#     clients, save to new preview, memory after 50 saves.
# Usage: scripts/bench.sh [RUNS]   (RUNS per figure, default 3; the median is printed)
set -euo pipefail
cd "$(dirname "$0")/.."
RUNS=${1:-3}
BUILD_DIR=${BUILD_DIR:-build}
EXE=templates/ui_blocks/compose
PAGE=examples/bench_page_1024x600.json

[ -x "$EXE" ] || bash scripts/setup.sh
command -v /usr/bin/time >/dev/null || { apt-get update -qq && apt-get install -y -qq time >/dev/null; }
cmake --build "$BUILD_DIR" --target make_page emit_bench >/dev/null

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

# median of the numbers on standard input
median() { sort -g | awk '{v[NR]=$1} END {print (NR % 2) ? v[(NR+1)/2] : (v[NR/2] + v[NR/2+1]) / 2}'; }

# run_stats NAME CMD... : runs CMD RUNS times; sets SEC (median wall seconds), CPU (median
# user+sys seconds, the steadier figure on a shared machine) and KB (median peak RSS)
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

controls_of() { sed -n 's/.*含嵌套共 \([0-9]*\) 个控件.*/\1/p' "$work/$1.out"; }

echo "== scaling (--json-only, median of $RUNS) =="
"$BUILD_DIR/bench/make_page" "$PAGE" 0 >"$work/empty.json"
run_stats empty "$EXE" "$work/empty.json" --project "$work/pe" --json-only
base_kb=$KB
printf "%8s %9s %9s %9s %10s %12s %8s\n" blocks controls seconds cpu_s peak_MB bytes/control growth
prev_n=""; prev_s=""
for n in 100 1000 5000 20000; do
  "$BUILD_DIR/bench/make_page" "$PAGE" "$n" >"$work/page_$n.json"
  run_stats "n$n" "$EXE" "$work/page_$n.json" --project "$work/p$n" --json-only
  ctl=$(controls_of "n$n")
  per=$(awk -v k="$KB" -v b="$base_kb" -v c="$ctl" 'BEGIN {printf "%d", (k - b) * 1024 / c}')
  growth="-"
  if [ -n "$prev_n" ]; then
    growth=$(awk -v a="$prev_s" -v b="$CPU" -v m="$prev_n" -v n="$n" \
      'BEGIN {if (a <= 0) a = 0.005; if (b <= 0) b = 0.005; printf "%.2f", log(b / a) / log(n / m)}')
  fi
  printf "%8d %9d %9.3f %9.3f %10.1f %12d %8s\n" "$n" "$ctl" "$SEC" "$CPU" "$(awk -v k="$KB" 'BEGIN {print k / 1024}')" "$per" "$growth"
  prev_n=$n; prev_s=$CPU
done
echo "(growth: exponent of CPU time against blocks between this size and the previous one; 1.00 is linear)"

echo
BUILD_DIR="$BUILD_DIR" bash scripts/bench_readers.sh "$RUNS"

echo
echo "== bench page $(basename "$PAGE") (median of $RUNS) =="
fresh_t=""
: >"$work/fresh.t"; : >"$work/rerun.t"
for i in $(seq 1 "$RUNS"); do
  rm -rf "$work/bp"
  /usr/bin/time -f "%e %M" -o "$work/one" "$EXE" "$PAGE" --project "$work/bp" >"$work/bp.out"
  cat "$work/one" >>"$work/fresh.t"
  /usr/bin/time -f "%e %M" -o "$work/one" "$EXE" "$PAGE" --project "$work/bp" >"$work/bp2.out"
  cat "$work/one" >>"$work/rerun.t"
done
fresh_t=$(awk '{print $1}' "$work/fresh.t" | median)
rerun_t=$(awk '{print $1}' "$work/rerun.t" | median)
run_stats jo "$EXE" "$PAGE" --project "$work/bpj" --json-only
pics=$(find "$work/bp/resources/images" -name '*.png' | wc -l)
bytes=$(find "$work/bp/resources/images" -name '*.png' -printf '%s\n' | awk '{s += $1} END {print s}')
printf "%-22s %8.3f s\n" "fresh run" "$fresh_t"
printf "%-22s %8.3f s  (%.2fx fresh)\n" "rerun, same project" "$rerun_t" "$(awk -v a="$rerun_t" -v b="$fresh_t" 'BEGIN {print (b > 0) ? a / b : 0}')"
printf "%-22s %8.3f s\n" "--json-only" "$SEC"
printf "%-22s %8d files, %d bytes\n" "pictures" "$pics" "$bytes"

echo
echo "== picture emission against a plain libpng floor =="
"$BUILD_DIR/bench/emit_bench" "$RUNS"

echo
bash scripts/bench_serve.sh
