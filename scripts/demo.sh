#!/usr/bin/env bash
# The demo: installs what is missing (only what the plug-in and the tools need), builds the
# plug-in, installs it into the user's VST folder (~/.vst/Kelvane/, or Kelvane/ in the first folder
# of VST_PATH when that is set) and LV2 folder (~/.lv2/Kelvane.lv2/, or Kelvane.lv2/ in the first
# folder of LV2_PATH when that is set), renders the built-in drum loop through the installed
# plug-in with kelvane-render for four settings into out/demo/, and prints what each setting did
# to every hit.
# Each step prints one line; the package manager's and the compiler's output go to build/logs/,
# and a failing step shows the end of its log.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
logs="$root/build/logs"
mkdir -p "$logs"

# step NAME LOG COMMAND...: runs the command with its output in build/logs/LOG.
step() {
  local name=$1 log="$logs/$2"
  shift 2
  echo "demo: $name"
  if ! "$@" >"$log" 2>&1; then
    tail -n 30 "$log" >&2
    echo "demo: $name failed; the whole log is $log" >&2
    exit 1
  fi
}

"$root/scripts/install-deps.sh" demo
step "building the plug-in and the tools (log: build/logs/demo-build.log)" demo-build.log \
  "$root/scripts/build.sh" demo --target Kelvane KelvaneLV2 kelvane-render kelvane-demo

build="$root/build/release"
vst_folder=${VST_PATH:-}
vst_folder=${vst_folder%%:*}
[ -n "$vst_folder" ] || vst_folder="$HOME/.vst"
bundle="$vst_folder/Kelvane"
mkdir -p "$bundle"
install -m 755 "$build/Kelvane/Kelvane.so" "$bundle/Kelvane.so"
if [ -f "$build/Kelvane/resources.bin" ]; then
  install -m 644 "$build/Kelvane/resources.bin" "$bundle/resources.bin"
fi
echo "demo: installed $bundle/Kelvane.so"

# The LV2 bundle as the build made it: its shared object, its Turtle documents and the pack.
lv2_folder=${LV2_PATH:-}
lv2_folder=${lv2_folder%%:*}
[ -n "$lv2_folder" ] || lv2_folder="$HOME/.lv2"
lv2_bundle="$lv2_folder/Kelvane.lv2"
mkdir -p "$lv2_bundle"
install -m 755 "$build/lv2/Kelvane.lv2/Kelvane.so" "$lv2_bundle/Kelvane.so"
install -m 644 "$build/lv2/Kelvane.lv2/"*.ttl "$lv2_bundle/"
if [ -f "$build/lv2/Kelvane.lv2/resources.bin" ]; then
  install -m 644 "$build/lv2/Kelvane.lv2/resources.bin" "$lv2_bundle/resources.bin"
fi
echo "demo: installed $lv2_bundle/"

out="$root/out/demo"
mkdir -p "$out"
render() {
  "$build/tools/render/kelvane-render" --plugin "$bundle/Kelvane.so" --demo --force "$@"
}
render_all() {
  render --set Bypass=1 "$out/dry.wav" &&
    render --set Attack=1 "$out/attack-plus-100.wav" &&
    render --set Attack=0 "$out/attack-minus-100.wav" &&
    render --set Release=1 "$out/release-plus-100.wav"
}
step "rendering the built-in drum loop with four settings into out/demo/" demo-render.log render_all
echo
"$build/tools/demo/kelvane-demo" "$out"
