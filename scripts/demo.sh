#!/usr/bin/env bash
# The demo: installs what is missing, builds, and renders the built-in drum loop through the
# transient processor into out/demo/, printing what each setting did to every hit.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" release --target kelvane-demo
"$root/build/release/tools/demo/kelvane-demo" "$root/out/demo"
