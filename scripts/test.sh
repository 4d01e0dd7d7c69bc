#!/usr/bin/env bash
# The whole test suite: installs what is missing, then builds and runs every test twice,
# in a Release build and in a Debug build under AddressSanitizer and UndefinedBehaviorSanitizer.
# Then the tests that run several threads run a third time under ThreadSanitizer: those whose
# name is "<Suite>.Threaded<Case>", from the test programs listed in tsan_targets.
# Last, every fuzz target that has a seed corpus in fuzz/corpus/<target>/ fuzzes for
# fuzz_seconds on a copy of that corpus under build/fuzz/run/ (the repository is never written),
# and replays the inputs in fuzz/regressions/<target>/.
# Any failing test or sanitizer report fails the command.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh" || exit 1

export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1
tsan_targets=(foundation-runtime-tests foundation-memory-tests host-tests native-x11-tests host-lv2-tests
             host-editor-tests host-lv2-ui-tests)
fuzz_seconds=20

summaries=()
status=0
for flavour in release sanitize; do
  echo "== $flavour: build"
  if ! "$root/scripts/build.sh" "$flavour"; then
    summaries+=("$flavour: build failed")
    status=1
    continue
  fi
  echo "== $flavour: tests"
  log="$root/build/$flavour/ctest.log"
  ctest --test-dir "$root/build/$flavour" --output-on-failure --parallel "$(nproc)" 2>&1 | tee "$log"
  [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
  summaries+=("$flavour: $(grep -E 'tests passed' "$log" | tail -n 1)")
done

echo "== tsan: build"
if "$root/scripts/build.sh" tsan --target "${tsan_targets[@]}"; then
  echo "== tsan: threaded tests"
  log="$root/build/tsan/ctest.log"
  # Mesa's software GL rasterises on worker threads of its own, whose locking ThreadSanitizer
  # cannot see into (the driver is not instrumented) and reports as races inside the driver.
  # With LP_NUM_THREADS=0 it draws on the calling thread, and every report is about our code.
  LP_NUM_THREADS=0 ctest --test-dir "$root/build/tsan" -R '\.Threaded' --output-on-failure --parallel "$(nproc)" 2>&1 |
    tee "$log"
  [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
  summaries+=("tsan: $(grep -E 'tests passed' "$log" | tail -n 1)")
else
  summaries+=("tsan: build failed")
  status=1
fi

echo "== fuzz: build"
if "$root/scripts/build.sh" fuzz --target fuzzers; then
  fuzz_failures=()
  fuzz_targets=0
  for corpus in "$root"/fuzz/corpus/*/; do
    [ -d "$corpus" ] || continue
    name=$(basename "$corpus")
    fuzzer="$root/build/fuzz/fuzzers/$name"
    work="$root/build/fuzz/run/$name"
    if [ ! -x "$fuzzer" ]; then
      fuzz_failures+=("$name: no such fuzz target")
      continue
    fi
    echo "== fuzz: $name, $fuzz_seconds s"
    fuzz_targets=$((fuzz_targets + 1))
    rm -rf "$work"
    mkdir -p "$work/corpus" "$work/artifacts"
    cp "$corpus"* "$work/corpus/"
    # The target's own flags: the largest input that fits its format.
    options=()
    [ -f "$fuzzer.options" ] && read -r -a options <"$fuzzer.options"
    # A crash, a sanitizer report, a leak or an input slower than 10 s ends the run non-zero.
    if ! (cd "$work" && TMPDIR="$work" "$fuzzer" "${options[@]}" -max_total_time="$fuzz_seconds" -timeout=10 \
            -artifact_prefix="$work/artifacts/" "$work/corpus" >"$work/fuzz.log" 2>&1); then
      tail -n 40 "$work/fuzz.log"
      fuzz_failures+=("$name: failed, input saved in build/fuzz/run/$name/artifacts/")
    fi
    regressions=()
    for input in "$root/fuzz/regressions/$name"/*; do
      [ -f "$input" ] && regressions+=("$input")
    done
    if [ ${#regressions[@]} -gt 0 ] && ! (cd "$work" && TMPDIR="$work" "$fuzzer" "${regressions[@]}" \
            >"$work/regressions.log" 2>&1); then
      tail -n 40 "$work/regressions.log"
      fuzz_failures+=("$name: a regression input fails again")
    fi
    tail -n 1 "$work/fuzz.log"
  done
  if [ ${#fuzz_failures[@]} -eq 0 ]; then
    summaries+=("fuzz: $fuzz_targets targets fuzzed $fuzz_seconds s each, regression inputs replayed")
  else
    summaries+=("fuzz: ${fuzz_failures[*]}")
    status=1
  fi
else
  summaries+=("fuzz: build failed")
  status=1
fi

echo
echo "== summary"
printf '%s\n' "${summaries[@]}"
[ $status -eq 0 ] && echo "all suites passed" || echo "FAILED"
exit $status
