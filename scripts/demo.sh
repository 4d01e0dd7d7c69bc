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
# first_folder LIST DEFAULT: the first folder of a colon-separated LIST, DEFAULT when LIST is empty.
first_folder() {
  local folder=${1%%:*}
  echo "${folder:-$2}"
}
# install_bundle FROM TO: every file of the build tree's bundle folder FROM (the shared object,
# resources.bin and, in an LV2 bundle, the Turtle files) into the folder TO.
install_bundle() {
  mkdir -p "$2"
  local file
  for file in "$1"/*; do
    case "$file" in
      *.so) install -m 755 "$file" "$2/" ;;
      *) install -m 644 "$file" "$2/" ;;
    esac
  done
}
bundle="$(first_folder "${VST_PATH:-}" "$HOME/.vst")/Kelvane"
install_bundle "$build/Kelvane" "$bundle"
echo "demo: installed $bundle/Kelvane.so"
lv2_bundle="$(first_folder "${LV2_PATH:-}" "$HOME/.lv2")/Kelvane.lv2"
install_bundle "$build/lv2/Kelvane.lv2" "$lv2_bundle"
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
