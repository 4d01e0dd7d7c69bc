#!/usr/bin/env bash
# Builds the Release flavour and runs the benchmarks; the last lines are their summaries:
#   dsp: X ns/stereo frame @512, Y x realtime @48k, silence/signal Z
#   host: adapter X ns/block @512, bare processor Y ns/block, overhead Z % (target <= 5 %, ...)
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" release --target dsp-bench host-bench
summaries=()
for program in dsp-bench host/host-bench; do
  summaries+=("$("$root/build/release/bench/$program" "$@" | tee /dev/stderr | tail -n 1)")
done
echo
printf '%s\n' "${summaries[@]}"
