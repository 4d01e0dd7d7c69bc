#!/usr/bin/env bash
# The demo: installs what is missing, builds the plug-in, installs it into the user's VST folder
# (~/.vst/Kelvane/, or Kelvane/ in the first folder of VST_PATH when that is set), renders the
# built-in drum loop through the installed plug-in with kelvane-render for four settings into
# out/demo/, and prints what each setting did to every hit.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh"
"$root/scripts/build.sh" release --target Kelvane kelvane-render kelvane-demo

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
echo "installed $bundle/Kelvane.so"

out="$root/out/demo"
mkdir -p "$out"
render() {
  "$build/tools/render/kelvane-render" --plugin "$bundle/Kelvane.so" --demo --force "$@"
}
render --set Bypass=1 "$out/dry.wav"
render --set Attack=1 "$out/attack-plus-100.wav"
render --set Attack=0 "$out/attack-minus-100.wav"
render --set Release=1 "$out/release-plus-100.wav"
"$build/tools/demo/kelvane-demo" "$out"
