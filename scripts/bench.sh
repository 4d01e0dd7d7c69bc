#!/usr/bin/env bash
# Builds the Release flavour and runs the benchmarks; the last lines are their summaries:
#   dsp: X ns/stereo frame @512, Y x realtime @48k, silence/signal Z
#   host: adapter X ns/block @512, bare processor Y ns/block, overhead Z % (target <= 5 %, ...)
#   render: ours/pixman fill F, blend B, scale to 1000x233 S1, to 1100x257 S2; repaint R ms
#   state: real chunk R us, 100000 attributes A ms, 1 MB attribute B ms (target < 10 ms, ...)
#   ui: frame F ms, allocations per frame N
#   present: gl G ms, ximage X ms per frame; cpu at 60 fps gl A %, ximage B %; allocations per frame N
#   lv2: ns/stereo frame @64/@512: Kelvane A/B (without meters C/D); <shaper> E/F (Kelvane/it x/y); ...
#   editor: cpu ximage X %, gl G % at 1100x257
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
"$root/scripts/install-deps.sh" bench
"$root/scripts/build.sh" release --target dsp-bench host-bench render-bench state-bench ui-bench present-bench lv2-bench \
  editor-bench
summaries=()
for program in dsp-bench host/host-bench render/render-bench plugin/state-bench ui/ui-bench native/present-bench \
               host/lv2-bench editor/editor-bench; do
  summaries+=("$("$root/build/release/bench/$program" "$@" | tee /dev/stderr | tail -n 1)")
done
echo
printf '%s\n' "${summaries[@]}"
