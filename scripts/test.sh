#!/usr/bin/env bash
# The whole test suite: installs what is missing, then builds and runs every test twice,
# in a Release build and in a Debug build under AddressSanitizer and UndefinedBehaviorSanitizer.
# Any failing test or sanitizer report fails the command.
set -uo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh" || exit 1

export ASAN_OPTIONS=halt_on_error=1:abort_on_error=1:detect_leaks=1:strict_string_checks=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1

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

echo
echo "== summary"
printf '%s\n' "${summaries[@]}"
[ $status -eq 0 ] && echo "all suites passed" || echo "FAILED"
exit $status
