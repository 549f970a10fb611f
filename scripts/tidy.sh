#!/usr/bin/env bash
# Runs clang-tidy over the sources that changed since they last passed: scripts/tidy.sh [--deep] [FILE...]
# A file has passed while it, every header outside of the tests and .clang-tidy are as they were.
# --deep follows every path through a function as far as the analyzer can, which takes three times as
# long; without it short paths are followed.
set -u
mode=shallow
[ "${1:-}" = --deep ] && mode=deep && shift
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
cd "$QEL_ROOT" || exit 1

stamps=build/tidy
mkdir -p "$stamps"
gcc_headers=$(dirname "$(i686-w64-mingw32-g++-posix -print-libgcc-file-name)")/include/c++
headers=$(git ls-files -co --exclude-standard '*.h' ':!tests' .clang-tidy | sort | xargs cat | sha256sum)

files=("$@")
[ $# -gt 0 ] || mapfile -t files < <(git ls-files -co --exclude-standard \
  'base/*.cpp' 'engine/*.cpp' 'xml/*.cpp' 'document/*.cpp' 'render/*.cpp' 'brush/*.cpp' 'dynamic/*.cpp' \
  'meter/*.cpp' 'tools/*.cpp' 'bench/*.cpp' ':!bench/qt')

# Without what this compiler's front end does not know.
sed -E 's/ -m(incoming|preferred)-stack-boundary=[0-9]//g' build/i686/compile_commands.json \
  >"$stamps/compile_commands.json" || exit 1

check() {
  local file=$1 stamp
  stamp=$stamps/$(printf '%s %s' "$headers" "$(sha256sum "$file")" | sha256sum | cut -c1-40)-$mode
  [ -e "$stamp" ] && return 0
  if clang-tidy -p "$stamps" --quiet --extra-arg=--target=i686-w64-mingw32 --extra-arg=-Wno-unknown-warning-option \
      --extra-arg=-isystem"$gcc_headers" --extra-arg=-isystem"$gcc_headers/i686-w64-mingw32" \
      --extra-arg=-Xclang --extra-arg=-analyzer-config --extra-arg=-Xclang --extra-arg=mode=$mode \
      "$file" >"$stamp.log" 2>/dev/null; then
    mv "$stamp.log" "$stamp"
  else
    grep -E 'error:|warning:' "$stamp.log"
    return 1
  fi
}
export -f check
export stamps headers gcc_headers mode
printf '%s\0' "${files[@]}" | xargs -0 -P "${QEL_JOBS:-$(nproc)}" -I{} bash -c 'check "$1"' _ {}
