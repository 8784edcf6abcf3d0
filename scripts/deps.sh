#!/usr/bin/env bash
# Installs the Debian packages orvo's build, tests and benchmarks need, only
# when something is missing. Sourced by the other scripts.
orvo_install_deps() {
  local wanted=(cmake ninja-build g++ clang libclang-rt-14-dev pkg-config libgtest-dev
                libgmock-dev libbenchmark-dev libprotobuf-dev protobuf-compiler
                libflatbuffers-dev flatbuffers-compiler nlohmann-json3-dev)
  local missing=()
  for p in "${wanted[@]}"; do
    dpkg-query -W -f='${Status}' "$p" 2>/dev/null | grep -q "install ok installed" || missing+=("$p")
  done
  if [ ${#missing[@]} -ne 0 ]; then
    local sudo=""
    [ "$(id -u)" -ne 0 ] && sudo="sudo"
    echo "Installing: ${missing[*]}"
    $sudo apt-get update -qq && \
      DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}" >/dev/null
  fi
}
