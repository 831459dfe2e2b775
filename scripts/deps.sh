#!/usr/bin/env bash
# Installs the Debian packages the build needs when they are missing (as root),
# or names them and stops (as any other user).
set -euo pipefail
pkgs=(cmake make g++ pkg-config qt6-base-dev libgl-dev libgtest-dev libgmock-dev libbenchmark-dev
      nlohmann-json3-dev libfmt-dev fonts-liberation fontconfig poppler-utils xvfb xauth)
missing=()
for p in "${pkgs[@]}"; do
  dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
done
if ((${#missing[@]})); then
  if [ "$(id -u)" = 0 ]; then
    echo "Installing: ${missing[*]}"
    export DEBIAN_FRONTEND=noninteractive
    apt-get update -qq
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
  else
    echo "Missing Debian packages: ${missing[*]}" >&2
    echo "Install them with: sudo apt-get install ${missing[*]}" >&2
    exit 1
  fi
fi
