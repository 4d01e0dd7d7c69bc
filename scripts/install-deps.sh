#!/usr/bin/env bash
# Installs the Debian packages that building, testing and the demo need.
# Idempotent: when every package is present it does nothing, not even an apt-get update.
# Runs as root directly, otherwise through sudo.
set -euo pipefail

packages=(
  # compiler and build
  g++ cmake ninja-build pkg-config
  # test and benchmark frameworks
  libgtest-dev libgmock-dev libbenchmark-dev
  # the compositor the renderer's benchmark measures itself against
  libpixman-1-dev
  # audio files for the tools
  libsndfile1-dev
  # picture decoding for the media library
  libpng-dev libjpeg62-turbo-dev
  # text: FreeType, and the system font the renderer loads first (DejaVu Sans)
  libfreetype-dev fonts-dejavu-core
  # the plug-in's state document, and a decimal-comma locale for its test
  libtinyxml-dev locales
  # fuzzing: clang with libFuzzer and the sanitizer runtimes
  clang-14 libclang-rt-14-dev
  # windows and presenting: Xlib with MIT-SHM and the cursor library, GL through GLX
  libx11-dev libxext-dev libxfixes-dev libxcursor-dev libgl-dev libopengl-dev
  # the GUI tests: a virtual X server, Mesa's software GL, and XTest for synthetic input
  xvfb xauth libgl1-mesa-dri libglx-mesa0 libxtst-dev
)

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

echo "install-deps: installing ${missing[*]}"
"${as_root[@]}" apt-get update -qq
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
