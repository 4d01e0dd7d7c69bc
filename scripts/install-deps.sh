#!/usr/bin/env bash
# Installs the Debian packages that a job needs:
#   install-deps.sh demo   what building the plug-in and the tools and running the demo need
#   install-deps.sh test   all of that, and what the tests, the benchmarks and the fuzzers need
#                          (the default)
#   install-deps.sh bench  all of that, and the plug-ins the benchmarks compare Kelvane with
# Idempotent: when every package is present it does nothing, not even an apt-get update.
# Runs as root directly, otherwise through sudo. The package manager's output goes to
# build/logs/install.log; the terminal gets one line, or the log's end when something fails.
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
job=${1:-test}

demo_packages=(
  # compiler and build
  g++ cmake ninja-build pkg-config
  # audio files for the tools
  libsndfile1-dev
  # picture decoding for the media library
  libpng-dev libjpeg62-turbo-dev
  # text: FreeType, and the system font the renderer loads first (DejaVu Sans)
  libfreetype-dev fonts-dejavu-core
  # the plug-in's state document
  libtinyxml-dev
  # the editor's art, rendered from SVG at build time, and the font of its labels
  librsvg2-dev libcairo2-dev fonts-inter
  # windows and presenting: Xlib with MIT-SHM and the cursor library, GL through GLX
  libx11-dev libxext-dev libxfixes-dev libxcursor-dev libgl-dev libopengl-dev
  # the LV2 plug-in's interface declarations
  lv2-dev
  # the stand-alone editor's sound: ALSA
  libasound2-dev
)
test_packages=(
  # test and benchmark frameworks
  libgtest-dev libgmock-dev libbenchmark-dev
  # the compositor the renderer's benchmark measures itself against
  libpixman-1-dev
  # a decimal-comma locale for the state test
  locales
  # fuzzing: clang with libFuzzer and the sanitizer runtimes
  clang-14 libclang-rt-14-dev
  # the GUI tests: a virtual X server, Mesa's software GL, and XTest for synthetic input
  xvfb xauth libgl1-mesa-dri libglx-mesa0 libxtst-dev
  # the LV2 tests' and benchmarks' host library, and the LV2 project's tools the tests run
  liblilv-dev lilv-utils serdi
  # Ardour 7, whose headless Lua session tool (ardour7-lua) runs the LV2 build in a real host
  ardour
)
bench_packages=(
  # the transient shapers Debian ships as LV2 plug-ins, which the LV2 benchmark compares
  mda-lv2 swh-lv2 calf-plugins
)

case "$job" in
  demo) packages=("${demo_packages[@]}") ;;
  test) packages=("${demo_packages[@]}" "${test_packages[@]}") ;;
  bench) packages=("${demo_packages[@]}" "${test_packages[@]}" "${bench_packages[@]}") ;;
  *) echo "install-deps: unknown job '$job' (demo, test or bench)" >&2; exit 2 ;;
esac

missing=()
for package in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q '^install ok installed$'; then
    missing+=("$package")
  fi
done
[ ${#missing[@]} -eq 0 ] && exit 0

if [ "$(id -u)" -eq 0 ]; then
  as_root=()
elif command -v sudo >/dev/null 2>&1; then
  as_root=(sudo)
else
  echo "install-deps: missing packages (${missing[*]}) and neither root nor sudo is available; install them and run again" >&2
  exit 1
fi

log="$root/build/logs/install.log"
mkdir -p "$(dirname "$log")"
echo "install-deps: installing ${#missing[@]} Debian packages (${missing[*]}); log in build/logs/install.log"
if ! { "${as_root[@]}" apt-get update -q &&
       "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}"
     } >"$log" 2>&1; then
  tail -n 20 "$log" >&2
  echo "install-deps: installing failed; the whole log is $log" >&2
  exit 1
fi
