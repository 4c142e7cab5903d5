# SPDX-License-Identifier: MIT
# shellcheck shell=bash
# What the scripts share. Sourced, never run; leaves the shell in the top directory.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

heading() { printf '\n== %s\n' "$*"; }

die() {
  printf '%s: %s\n' "${0##*/}" "$*" >&2
  exit 1
}

# As root, or through sudo.
as_root() {
  if ((EUID == 0)); then
    "$@"
  else
    sudo "$@"
  fi
}

# Installs the Debian packages that are missing.
need_packages() {
  local package missing=()
  if ! command -v apt-get >/dev/null; then
    echo "This system has no apt-get, so nothing is installed here. What is used comes from" \
      "these Debian packages: $*" >&2
    return
  fi
  for package in "$@"; do
    if [[ $(dpkg-query -W -f '${db:Status-Status}' "$package" 2>/dev/null) != installed ]]; then
      missing+=("$package")
    fi
  done
  ((${#missing[@]})) || return 0
  ((EUID == 0)) || command -v sudo >/dev/null ||
    die "these packages are missing, and only root or sudo can install them: ${missing[*]}"
  echo "Installing ${missing[*]}"
  # The package lists may be missing, or older than what the servers have.
  install_packages "${missing[@]}" 2>/dev/null && return
  as_root apt-get update -qq || echo "apt-get update has failed" >&2
  install_packages "${missing[@]}" || die "cannot install ${missing[*]}"
}

install_packages() {
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -qq --no-install-recommends \
    -o DPkg::Lock::Timeout=300 -o Dpkg::Use-Pty=0 "$@" >/dev/null
}

# What building with the preset dev, tests and tool included, takes.
need_build_packages() {
  need_packages cmake ninja-build g++ jq libboost-dev libcli11-dev libconfig++-dev libdtl-dev \
    libgtest-dev libtomlplusplus-dev nlohmann-json3-dev
}

# A test takes a locale with a decimal comma and grouping. Where there is none and none can be made,
# the test says that it is skipped.
need_german_locale() {
  locale -a | grep -qix 'de_DE\.utf-\?8' && return
  (need_packages locales && as_root localedef -i de_DE -f UTF-8 de_DE.UTF-8) ||
    echo "There is no locale de_DE.UTF-8 here, and none can be made" >&2
}

# configure PRESET [CMake arguments]
configure() {
  cmake --preset "$@" --log-level=WARNING -D CMAKE_EXPORT_COMPILE_COMMANDS=ON
}

# The C++ files of the project, as find(1) prints them with the arguments given.
cpp_files() {
  find bench examples include src tests tools \( -name '*.cpp' -o -name '*.h' \) "$@"
}
