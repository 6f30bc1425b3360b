#!/usr/bin/env bash
# Installs, with apt-get, the Debian packages the build, the tests and the
# pictures need; packages already present are left alone.
set -euo pipefail
packages=(
  cmake ninja-build g++ clang libclang-rt-dev pkg-config
  libeigen3-dev libcminpack-dev libgtest-dev libgmock-dev libbenchmark-dev
  qt6-base-dev qt6-svg-dev libqt6opengl6-dev libgl-dev
  xvfb xauth python3 python3-gemmi gemmi-dev tao-pegtl-dev libsymspg-dev python3-xraylib python3-numpy python3-scipy python3-mpmath python3-matplotlib python3-periodictable libxy-bin libxy-dev gzip p7zip-full
  desktop-file-utils libxml2-utils
  ghostscript poppler-utils qt6-image-formats-plugins
  libtiff-dev libcbf-dev libhdf5-dev libpng-dev
  libgl1-mesa-dri libegl-mesa0
)
missing=()
for p in "${packages[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  echo "Installing: ${missing[*]}"
  sudo_cmd=()
  [ "$(id -u)" -ne 0 ] && sudo_cmd=(sudo)
  "${sudo_cmd[@]}" apt-get update -qq
  DEBIAN_FRONTEND=noninteractive "${sudo_cmd[@]}" apt-get install -y -qq --no-install-recommends "${missing[@]}"
fi
