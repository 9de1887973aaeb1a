#!/usr/bin/env bash
# Installs the Debian packages the library, its tools and its tests need.
# Idempotent: when everything is there it only checks and returns.
set -euo pipefail

packages=(
  build-essential cmake pkg-config git clang-format
  libfreetype-dev libfontconfig-dev fonts-liberation2 fonts-dejavu-core
  libpng-dev libjpeg62-turbo-dev libgif-dev nlohmann-json3-dev
  libsdl2-dev libx11-dev
  libgtest-dev libgmock-dev libbenchmark-dev
  clang libclang-rt-14-dev
  xvfb openbox xdotool xclip x11-utils x11-xkb-utils
  locales
)

missing=()
for p in "${packages[@]}"; do
  if ! dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q 'ok installed'; then
    missing+=("$p")
  fi
done

if [ ${#missing[@]} -gt 0 ]; then
  echo "setup: installing ${missing[*]}"
  export DEBIAN_FRONTEND=noninteractive
  apt-get update -qq
  apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null
fi

# The number-format property tests compare with the C library's grouping in
# these two locales.
want_locales=(pt_BR.UTF-8 en_US.UTF-8)
need_gen=0
for l in "${want_locales[@]}"; do
  if ! locale -a 2>/dev/null | grep -qi "^${l%%.*}\.utf-\?8$"; then
    need_gen=1
    sed -i "s/^# *\(${l} UTF-8\)/\1/" /etc/locale.gen
  fi
done
if [ "$need_gen" = 1 ]; then
  locale-gen >/dev/null
fi
