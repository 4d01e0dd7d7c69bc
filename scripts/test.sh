#!/usr/bin/env bash
# The whole test suite: installs what is missing, then builds and runs every test twice,
# in a Release build and in a Debug build under AddressSanitizer and UndefinedBehaviorSanitizer.
# Then the tests that run several threads run a third time under ThreadSanitizer: those whose
# name is "<Suite>.Threaded<Case>", from the test programs listed in tsan_targets.
# Any failing test or sanitizer report fails the command.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh" || exit 1

export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
export TSAN_OPTIONS=halt_on_error=1:second_deadlock_stack=1
tsan_targets=(foundation-runtime-tests)

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
  ctest --test-dir "$root/build/tsan" -R '\.Threaded' --output-on-failure --parallel "$(nproc)" 2>&1 | tee "$log"
  [ "${PIPESTATUS[0]}" -eq 0 ] || status=1
  summaries+=("tsan: $(grep -E 'tests passed' "$log" | tail -n 1)")
else
  summaries+=("tsan: build failed")
  status=1
fi

echo
echo "== summary"
printf '%s\n' "${summaries[@]}"
[ $status -eq 0 ] && echo "all suites passed" || echo "FAILED"
exit $status
