#!/usr/bin/env bash
# Installs what is missing to build, test and run Halvane on Debian 12; quick where nothing is. Needs root or sudo only then.
#   Scripts/install_packages.sh [--full]     --full: also the compiler and run-time library of the sanitisers and fuzz targets
set -euo pipefail

packages=(
    cmake ninja-build g++ git
    qtbase5-dev qt5-image-formats-plugins
    libhwy-dev libcli11-dev libtinyxml2-dev
    libgtest-dev libgmock-dev libbenchmark-dev
    clang libclang-rt-14-dev llvm-14 clang-format
    python3 python3-pil imagemagick libnvtt-bin astcenc gcc
    xvfb xauth xdotool openbox x11-utils
    libegl1-mesa-dev libgl1-mesa-dri libgles2-mesa-dev
    fonts-dejavu-core
)

missing=()
for package in "${packages[@]}"; do
    status=$(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null || true)
    [ "$status" = installed ] || missing+=("$package")
done
[ ${#missing[@]} -gt 0 ] || exit 0

as_root=()
if [ "$(id -u)" -ne 0 ]; then
    command -v sudo >/dev/null || { echo "Missing packages: ${missing[*]}. Install them, or run this as root." >&2; exit 1; }
    as_root=(sudo)
fi
echo "Installing: ${missing[*]}" >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -q >&2
"${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" >&2
