# shellcheck shell=bash
# Builds the fuzzers; sourced by fuzz.sh, which runs in the project's folder then.
source "$(dirname "${BASH_SOURCE[0]}")/../scripts/setup.sh"
cd "$QEL_ROOT" || exit 2
FUZZ_BUILD=${QEL_FUZZ_BUILD:-$QEL_ROOT/build/fuzz}
# shellcheck disable=SC2034 # for those who source this
FUZZ_BIN=$FUZZ_BUILD/bin

fuzz_build() { # [TARGET...]
  local log=$FUZZ_BUILD/build.log
  qel_need cmake cmake
  qel_need ninja ninja-build
  qel_need clang++ clang
  qel_need /usr/lib/llvm-14/lib/clang/14.0.6/lib/linux/libclang_rt.fuzzer-x86_64.a libclang-rt-14-dev
  qel_need /usr/include/wine/wine/windows/windows.h libwine-dev
  qel_install || return 1
  mkdir -p "$FUZZ_BUILD"
  if ! { qel_configure fuzz "$FUZZ_BUILD" && cmake --build "$FUZZ_BUILD" --target "${@:-fuzzers}"; } >"$log" 2>&1 </dev/null; then
    tail -n 40 "$log" >&2
    return 1
  fi
}
