#!/usr/bin/env bash
# Builds the Release flavour and runs the benchmarks; the last line is the summary.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" release --target dsp-bench
"$root/build/release/bench/dsp-bench" "$@"
