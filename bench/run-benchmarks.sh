#!/usr/bin/env bash
# Runs the benchmarks on SQLite and, when VBI_TEST_PG_URL names a server (as
# ./scripts/with-test-postgres.sh sets it), on PostgreSQL; prints one table of
# ratios and writes bench/RESULTS.md.
#
#   bench/run-benchmarks.sh [BUILD_DIR]
#
# VBI_BENCH_REPETITIONS (default 15) and VBI_BENCH_MIN_TIME (seconds per
# repetition, default 0.25) trade run time for steadier medians.
set -euo pipefail

here=$(cd "$(dirname "$0")" && pwd)
build=${1:-build}
bench="$build/bench/vbi_bench"
report="$build/bench/vbi_bench_report"
for program in "$bench" "$report"; do
  if [ ! -x "$program" ]; then
    echo "run-benchmarks: $program is missing; build the vbi_benchmarks target first" >&2
    exit 1
  fi
done

# The raw Google Benchmark output stays beside the programs for a second look
# (vbi_bench_report can turn it into the table again).
out="$build/bench/last-run"
rm -rf "$out"
mkdir -p "$out"

backends=(sqlite)
if [ -n "${VBI_TEST_PG_URL:-}" ]; then
  backends+=(postgresql)
else
  echo "run-benchmarks: VBI_TEST_PG_URL is not set; measuring SQLite only" >&2
fi

export QT_QPA_PLATFORM=offscreen
# Repetitions of all the measurements are shuffled together, so a slow moment
# of the machine falls on works and floors alike instead of on one of them.
flags=(
  --benchmark_repetitions="${VBI_BENCH_REPETITIONS:-15}"
  --benchmark_min_time="${VBI_BENCH_MIN_TIME:-0.25}"
  --benchmark_enable_random_interleaving=true
  --benchmark_out_format=json
)

results=()
for backend in "${backends[@]}"; do
  echo "run-benchmarks: measuring on $backend ..." >&2
  start=$SECONDS
  if ! VBI_BENCH_BACKEND=$backend "$bench" "${flags[@]}" --benchmark_out="$out/$backend.json" \
       >"$out/$backend.log" 2>&1; then
    echo "run-benchmarks: the $backend run failed:" >&2
    tail -n 30 "$out/$backend.log" >&2
    exit 1
  fi
  echo "run-benchmarks: $backend done in $((SECONDS - start)) s" >&2
  results+=("$out/$backend.json")
done

"$report" --results "$here/RESULTS.md" --notes "$here/findings.md" "${results[@]}"
