#!/usr/bin/env bash
# Builds orvo and runs the tests three times: every test in a plain Release
# build, every test under AddressSanitizer and UndefinedBehaviorSanitizer
# (halt on first error), and the concurrency tests (label "threads") under
# ThreadSanitizer.
#   scripts/test.sh            all three runs
#   scripts/test.sh plain      the plain run only
#   scripts/test.sh sanitize   the address and undefined-behaviour run only
#   scripts/test.sh threads    the ThreadSanitizer run only
set -euo pipefail
cd "$(dirname "$0")/.."
. scripts/deps.sh
orvo_install_deps

jobs=$(nproc)
mode=${1:-all}

run_suite() {
  local dir=$1; shift
  cmake -S . -B "$dir" -G Ninja "$@" >/dev/null
  cmake --build "$dir" -j "$jobs"
  ctest --test-dir "$dir" --output-on-failure -j "$jobs"
}

if [ "$mode" = all ] || [ "$mode" = plain ]; then
  echo "== plain build and tests"
  run_suite build -DCMAKE_BUILD_TYPE=Release
fi
if [ "$mode" = all ] || [ "$mode" = sanitize ]; then
  echo "== AddressSanitizer + UndefinedBehaviorSanitizer build and tests"
  export ASAN_OPTIONS=halt_on_error=1:abort_on_error=0:detect_leaks=1:detect_stack_use_after_return=1
  export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
  run_suite build-asan -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVO_SANITIZE=address,undefined \
    -DORVO_BUILD_BENCH=OFF
fi
if [ "$mode" = all ] || [ "$mode" = threads ]; then
  echo "== ThreadSanitizer build and concurrency tests"
  export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1
  cmake -S . -B build-tsan -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVO_SANITIZE=thread \
    -DORVO_BUILD_BENCH=OFF -DORVO_BUILD_EXAMPLES=OFF >/dev/null
  threads_targets=$(ctest --test-dir build-tsan -N -L threads | sed -n 's/^ *Test *#[0-9]*: //p')
  cmake --build build-tsan -j "$jobs" --target $threads_targets
  ctest --test-dir build-tsan --output-on-failure -L threads
fi
