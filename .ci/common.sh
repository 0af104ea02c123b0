# SPDX-FileCopyrightText: The vantix authors
# SPDX-License-Identifier: MIT
#
# Sourced by demo, check and .ci/run.

# need_packages PACKAGE...: installs what is missing on Debian and its kin; elsewhere
# names it and stops.
need_packages() {
  local missing=() package
  if ! command -v dpkg-query >/dev/null; then
    local tools=(cmake ninja "${CXX:-c++}" pkg-config) tool
    for tool in "${tools[@]}"; do
      command -v "$tool" >/dev/null || missing+=("$tool")
    done
    pkg-config --exists 'Qt6Widgets >= 6.4' 2>/dev/null || missing+=("Qt 6.4 or later (Widgets)")
    [ ${#missing[@]} -eq 0 ] && return
    echo "Please install: ${missing[*]}" >&2
    exit 1
  fi
  for package in "$@"; do
    dpkg-query -W -f '${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return
  local as_root=()
  if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null; then
      echo "Please install: ${missing[*]}" >&2
      exit 1
    fi
    as_root=(sudo)
  fi
  echo "Installing: ${missing[*]}" >&2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive apt-get update -qq >&2
  "${as_root[@]}" env DEBIAN_FRONTEND=noninteractive \
    apt-get install -y -qq --no-install-recommends "${missing[@]}" >/dev/null ||
    { echo "Please install: ${missing[*]}" >&2; exit 1; }
}

build_packages=(g++ cmake ninja-build pkg-config qt6-base-dev qt6-l10n-tools qt6-qpa-plugins
  fonts-dejavu-core libarchive-dev libpcap-dev libpq-dev libqt6sql6-sqlite libre2-dev libsqlite3-dev
  libsystemd-dev)

# Files that begin with precompiled headers are kept too, and serve users of other languages.
export CCACHE_SLOPPINESS=locale,pch_defines,time_macros

# configure PRESET [OPTION...]: configures a preset, through ccache where there is one. Files are
# compiled in bunches, which takes half the time, but where tools are to see each by itself.
configure() {
  local preset=$1
  shift
  if [ "$preset" = release ] || [ "$preset" = asan ]; then
    set -- -DCMAKE_UNITY_BUILD=ON -DCMAKE_UNITY_BUILD_BATCH_SIZE=16 "$@"
  fi
  if command -v ccache >/dev/null; then
    set -- -DCMAKE_CXX_COMPILER_LAUNCHER=ccache "$@"
  fi
  cmake --preset "$preset" "$@" >/dev/null
}

# count_tests JUNIT_FILE: adds what ctest wrote to $passed and $failed.
count_tests() {
  local tests failures
  tests=$(grep -c '<testcase ' "$1" 2>/dev/null || true)
  failures=$(grep -c 'status="fail"' "$1" 2>/dev/null || true)
  passed=$((passed + tests - failures))
  failed=$((failed + failures))
}
