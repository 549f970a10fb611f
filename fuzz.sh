#!/usr/bin/env bash
# Fuzzes the engine: runs the four fuzzers of fuzz/ at the same time, on the native build with
# sanitizers. Ends with 1 when one of them finds something; what it found stands in fuzz/findings
# then, as small as it could be made.
#   ./fuzz.sh [MINUTES]   each for that long (30)
#   ./fuzz.sh --replay    runs the corpus and every former finding once
#   ./fuzz.sh --keep      takes over into fuzz/corpus what new inputs the runs have found
set -u
source "$(dirname "${BASH_SOURCE[0]}")/fuzz/build.sh"

TARGETS=(xml life attr brush)
MAX_BYTES=6000  # of an input that is made up
MAX_SECONDS=60  # for one input, on a busy machine
MINIMISE_SECONDS=60
KEPT_BYTES=450000 # of a target's corpus in the repository
run=$FUZZ_BUILD/run

export ASAN_OPTIONS=detect_leaks=1:${ASAN_OPTIONS:-}
export UBSAN_OPTIONS=print_stacktrace=1:halt_on_error=1:${UBSAN_OPTIONS:-}

say() { printf '%s\n' "$*"; }

# The options of a target.
options() {
  case $1 in xml | life) say -dict="$PWD/fuzz/qel.dict" ;; esac
  say -entropic=0 # its accounts cost more time here than they save
  say -max_len=$MAX_BYTES
  say -timeout=$MAX_SECONDS
}

run_target() { # TARGET ARGUMENT...
  local target=$1
  shift
  "$FUZZ_BIN/fuzz_$target" "$@" </dev/null
}

files_of() { # TARGET: its corpus and its former findings
  find "$PWD/fuzz/corpus/$1" "$PWD/fuzz/findings" \
    \( -path "*/corpus/*" -o -name "$1-*" \) -type f 2>/dev/null | sort
}

replay() {
  local target failed=0 pids=()
  for target in "${TARGETS[@]}"; do
    local files log=$run/$target-replay.log
    mapfile -t files < <(files_of "$target")
    mkdir -p "$run"
    (
      if run_target "$target" -timeout=$MAX_SECONDS "${files[@]}" >"$log" 2>&1; then
        say "fuzz $target: ${#files[@]} inputs passed"
      else
        say "fuzz $target: FAILED with $(grep '^Running: ' "$log" | tail -n 1 | cut -c10-)"
        tail -n 40 "$log"
        exit 1
      fi
    ) &
    pids+=($!)
  done
  for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
  return $failed
}

# Makes what a worker left smaller and gives it its name.
keep_findings() { # TARGET
  local found name small
  for found in "$run/$1"/found/*; do
    [ -e "$found" ] || continue
    small=$run/$1/small
    rm -f "$small"
    case $found in
      *crash-* | *leak-*)
        run_target "$1" -minimize_crash=1 -max_total_time=$MINIMISE_SECONDS \
          -timeout=$MAX_SECONDS -exact_artifact_path="$small" "$found" >/dev/null 2>&1 ;;
    esac
    [ -e "$small" ] || cp "$found" "$small"
    name=$1-$(sha1sum "$small" | cut -c1-10)
    mkdir -p fuzz/findings
    cp "$small" "fuzz/findings/$name"
    say "  $(basename "$found"): fuzz/findings/$name"
    rm -f "$found"
  done
}

report() { # TARGET: executions and coverage of all workers
  local log runs=0 edges=0 all=0 n
  for log in "$run/$1"/worker-*.log; do
    n=$(sed -n 's/^stat::number_of_executed_units: *//p' "$log" | tail -n 1)
    [ -n "$n" ] || n=$(grep -aoE '^#[0-9]+' "$log" | tail -n 1 | tr -d '#')
    runs=$((runs + ${n:-0}))
    n=$(grep -aoE 'cov: [0-9]+' "$log" | tail -n 1 | cut -c6-)
    [ "${n:-0}" -gt "$edges" ] && edges=$n
    n=$(grep -aoE 'Loaded 1 modules +\([0-9]+' "$log" | head -n 1 | grep -oE '[0-9]+$')
    all=${n:-$all}
  done
  say "fuzz $1: $runs executions, $edges of $all edges"
}

fuzz() { # MINUTES
  local seconds=$(($1 * 60)) target worker pids=() failed=0
  local workers=$((($(nproc) + 3) / 4)) # of each target
  for target in "${TARGETS[@]}"; do
    rm -rf "${run:?}/$target"/{found,worker-*,small}
    mkdir -p "$run/$target/found" "$FUZZ_BUILD/corpus/$target"
    local opts
    mapfile -t opts < <(options "$target")
    for worker in $(seq "$workers"); do
      run_target "$target" "${opts[@]}" -max_total_time=$seconds -reload=10 \
        -print_final_stats=1 -report_slow_units=5 -artifact_prefix="$run/$target/found/" \
        "$FUZZ_BUILD/corpus/$target" "$PWD/fuzz/corpus/$target" \
        >"$run/$target/worker-$worker.log" 2>&1 &
      pids+=($!)
    done
  done
  trap 'kill "${pids[@]}" 2>/dev/null; exit 130' INT TERM
  for pid in "${pids[@]}"; do wait "$pid" || failed=1; done
  trap - INT TERM
  for target in "${TARGETS[@]}"; do
    report "$target"
    grep -ahE 'broken promise|ERROR: |runtime error|ALARM' "$run/$target"/worker-*.log | sed 's/^/  /'
    find "$run/$target/found" -name 'slow-unit-*' | while read -r slow; do
      say "  slow: $slow"
    done
    mkdir -p "$run/$target/slow"
    find "$run/$target/found" -name 'slow-unit-*' -exec mv {} "$run/$target/slow/" \;
    keep_findings "$target"
  done
  [ $failed = 0 ] || say "Findings: the logs stand in $run."
  return $failed
}

# The seeds, and what covers more than they do, small ones first, up to the limit.
keep_corpus() {
  local target old new bytes size file
  for target in "${TARGETS[@]}"; do
    [ -d "$FUZZ_BUILD/corpus/$target" ] || continue
    new=$run/$target/merged
    old=$PWD/fuzz/corpus/$target
    rm -rf "$new"
    mkdir -p "$new"
    cp "$old"/seed-* "$new"
    run_target "$target" -merge=1 -timeout=$MAX_SECONDS "$new" "$old" \
      "$FUZZ_BUILD/corpus/$target" >"$run/$target/merge.log" 2>&1 ||
      { tail -n 20 "$run/$target/merge.log"; return 1; }
    find "$old" -type f ! -name 'seed-*' -delete
    bytes=0
    while read -r size file; do
      [ $((bytes += size)) -le $KEPT_BYTES ] || break
      cp "$file" "$old/$(sha1sum "$file" | cut -c1-12)"
    done < <(find "$new" -type f ! -name 'seed-*' -printf '%s %p\n' | sort -n)
    say "fuzz $target: $(find "$old" -type f | wc -l) inputs, $(du -sb "$old" | cut -f1) bytes"
  done
}

case ${1:-30} in
  --replay) fuzz_build || exit 2; replay ;;
  --keep) fuzz_build || exit 2; keep_corpus ;;
  *[!0-9]* | 0*) sed -n '2,8s/^# \{0,1\}//p' "${BASH_SOURCE[0]}"; exit 2 ;;
  *) fuzz_build || exit 2; fuzz "${1:-30}" ;;
esac
