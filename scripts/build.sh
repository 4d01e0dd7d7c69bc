#!/usr/bin/env bash
# Configures and builds one flavour of the project under build/<flavour>.
#   release   optimised build (the default)
#   sanitize  Debug build with AddressSanitizer and UndefinedBehaviorSanitizer
#   tsan      Debug build with ThreadSanitizer, without benchmarks and tools
# Extra arguments go to the CMake build step (for example --target kelvane-demo).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
flavour=${1:-release}
[ $# -gt 0 ] && shift

case "$flavour" in
  release)  options=(-DCMAKE_BUILD_TYPE=Release) ;;
  sanitize) options=(-DCMAKE_BUILD_TYPE=Debug -DQ1_SANITIZE=address,undefined -DQ1_BUILD_BENCH=OFF) ;;
  tsan)     options=(-DCMAKE_BUILD_TYPE=Debug -DQ1_SANITIZE=thread -DQ1_BUILD_BENCH=OFF -DQ1_BUILD_TOOLS=OFF) ;;
  *) echo "build.sh: unknown flavour '$flavour' (release, sanitize or tsan)" >&2; exit 2 ;;
esac

build="$root/build/$flavour"
cmake -S "$root" -B "$build" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build" --parallel "$(nproc)" "$@"
