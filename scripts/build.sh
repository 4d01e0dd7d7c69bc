#!/usr/bin/env bash
# Configures and builds one flavour of the project under build/<flavour>.
#   release   optimised build (the default)
#   demo      the optimised build of the plug-in and the tools alone, in the release folder,
#             without the tests and benchmarks (and so without their packages)
#   sanitize  Debug build with AddressSanitizer and UndefinedBehaviorSanitizer
#   tsan      Debug build with ThreadSanitizer, without benchmarks and tools
#   fuzz      libFuzzer targets: clang, Debug at -O1, AddressSanitizer and
#             UndefinedBehaviorSanitizer, without tests, benchmarks and tools (--target fuzzers)
# Extra arguments go to the CMake build step (for example --target kelvane-demo).
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
flavour=${1:-release}
[ $# -gt 0 ] && shift

case "$flavour" in
  release)  options=(-DCMAKE_BUILD_TYPE=Release -DQ1_BUILD_TESTS=ON -DQ1_BUILD_BENCH=ON) ;;
  demo)     options=(-DCMAKE_BUILD_TYPE=Release -DQ1_BUILD_TESTS=OFF -DQ1_BUILD_BENCH=OFF)
            flavour=release ;;
  sanitize) options=(-DCMAKE_BUILD_TYPE=Debug -DQ1_SANITIZE=address,undefined -DQ1_BUILD_BENCH=OFF) ;;
  tsan)     options=(-DCMAKE_BUILD_TYPE=Debug -DQ1_SANITIZE=thread -DQ1_BUILD_BENCH=OFF -DQ1_BUILD_TOOLS=OFF) ;;
  fuzz)     options=(-DCMAKE_C_COMPILER=clang-14 -DCMAKE_CXX_COMPILER=clang++-14 -DCMAKE_BUILD_TYPE=Debug
                     "-DCMAKE_C_FLAGS_DEBUG=-g -O1" "-DCMAKE_CXX_FLAGS_DEBUG=-g -O1"
                     -DQ1_SANITIZE=address,undefined -DQ1_FUZZ=ON
                     -DQ1_BUILD_TESTS=OFF -DQ1_BUILD_BENCH=OFF -DQ1_BUILD_TOOLS=OFF) ;;
  *) echo "build.sh: unknown flavour '$flavour' (release, demo, sanitize, tsan or fuzz)" >&2; exit 2 ;;
esac

build="$root/build/$flavour"
cmake -S "$root" -B "$build" -G Ninja "${options[@]}" >/dev/null
cmake --build "$build" --parallel "$(nproc)" "$@"
