#!/usr/bin/env bash
# Builds the libFuzzer targets with clang under AddressSanitizer and
# UndefinedBehaviorSanitizer, and runs each for a number of seconds.
#   fuzz/run.sh [seconds per target] [target ...]
# Default: 60 seconds, every target. The committed seeds in fuzz/corpus/<target>
# are read; new inputs go to fuzz/corpus-work/<target> and findings to
# fuzz/artifacts/ (both ignored by git). `fuzz/run.sh seeds` rewrites the
# codec's seed corpora from the encoder.
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
shift || true
build=build-fuzz
jobs=$(nproc)

cmake -S . -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo \
  -DORVO_BUILD_FUZZ=ON -DORVO_BUILD_TESTS=OFF -DORVO_BUILD_BENCH=OFF -DORVO_BUILD_EXAMPLES=OFF \
  -DCMAKE_CXX_COMPILER=clang++ -DORVO_SANITIZE=address,undefined \
  -DCMAKE_CXX_FLAGS=-fsanitize=fuzzer-no-link >/dev/null

if [ "$seconds" = seeds ]; then
  cmake --build "$build" -j "$jobs" --target owire_seeds
  "$build/fuzz/owire_seeds" fuzz/corpus
  exit 0
fi

targets=("$@")
if [ ${#targets[@]} -eq 0 ]; then
  for f in fuzz/*_fuzzer.cpp; do targets+=("$(basename "$f" .cpp)"); done
fi
cmake --build "$build" -j "$jobs" --target "${targets[@]}"

export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
mkdir -p fuzz/artifacts
status=0
for t in "${targets[@]}"; do
  work=fuzz/corpus-work/$t
  mkdir -p "$work" "fuzz/corpus/$t"
  echo "== $t for ${seconds}s"
  if ! "$build/fuzz/$t" -max_total_time="$seconds" -max_len=4096 -timeout=10 -rss_limit_mb=2048 \
      -artifact_prefix="fuzz/artifacts/$t-" -print_final_stats=1 "$work" "fuzz/corpus/$t" \
      2>"fuzz/artifacts/$t.log"; then
    echo "!! $t found a problem: see fuzz/artifacts/$t.log"
    tail -40 "fuzz/artifacts/$t.log"
    status=1
  else
    grep -E "stat::number_of_executed_runs|cov:" "fuzz/artifacts/$t.log" | tail -2
  fi
done
exit $status
