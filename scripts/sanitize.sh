#!/usr/bin/env bash
# AddressSanitizer + UndefinedBehaviorSanitizer pass. Builds with clang into build-sanitize
# (the program as templates/ui_blocks/compose-asan, the normal build is left alone), runs the
# whole test suite against it, then composes every example page with --render --check.
# Any sanitizer report, also from the json2img and check_all children, fails the pass.
set -euo pipefail
cd "$(dirname "$0")/.."

SKIP_BUILD=1 bash scripts/setup.sh --with-clang
BUILD_DIR=${BUILD_DIR:-build-sanitize}
JOBS=${JOBS:-$(nproc)}
export CCACHE_BASEDIR="$PWD"
CC=clang CXX=clang++ cmake -S . -B "$BUILD_DIR" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DCOMPOSE_SANITIZE=ON -DCOMPOSE_FUZZ=ON -DCMAKE_CXX_COMPILER_LAUNCHER=ccache >/dev/null
cmake --build "$BUILD_DIR" -j "$JOBS"

logs=$(mktemp -d /tmp/sanitize_XXXXXX)
trap 'rm -rf "$logs"' EXIT
# Reports go to files, one per process, so a child's report cannot hide in a captured stream.
export ASAN_OPTIONS="detect_leaks=1:abort_on_error=1:log_path=$logs/asan"
export UBSAN_OPTIONS="print_stacktrace=1:halt_on_error=1:log_path=$logs/ubsan"

status=0
ctest --test-dir "$BUILD_DIR" --output-on-failure -j "$JOBS" || status=1

for spec in examples/*.json; do
  name=$(basename "$spec" .json)
  out="$logs/pages/$name"
  mkdir -p "$out"
  rc=0
  templates/ui_blocks/compose-asan "$spec" --project "$out/proj" --render --check >"$out/report.txt" \
    2>"$out/err.txt" || rc=$?
  if [ "$rc" != 0 ]; then
    echo "[X] $name: compose-asan exit $rc" >&2
    cat "$out/err.txt" >&2
    status=1
  fi
done

if compgen -G "$logs/asan.*" >/dev/null || compgen -G "$logs/ubsan.*" >/dev/null; then
  cat "$logs"/asan.* "$logs"/ubsan.* 2>/dev/null >&2 || true
  echo "[X] sanitizer reports above" >&2
  status=1
fi
[ "$status" = 0 ] && echo "sanitize: tests and $(ls examples/*.json | wc -l) example pages clean"
exit "$status"
