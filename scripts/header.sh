#!/usr/bin/env bash
# Compiles the exported header alone: as C89 (with the comments and types that windows.h needs), C11,
# C++98, C++11 and C++20, for both word sizes.
set -u
source "$(dirname "${BASH_SOURCE[0]}")/setup.sh"
status=0
for arch in i686 x86_64; do
  for form in "gcc c gnu89" "gcc c c11" "g++ c++ c++98" "g++ c++ c++11" "g++ c++ c++20"; do
    read -r compiler language standard <<<"$form"
    if ! printf '#include "include/QELEngine.h"\nint main(void) { return QEL_TYPE_ROOT; }\n' |
        "$arch-w64-mingw32-$compiler-posix" -x "$language" -std="$standard" -Wall -Wextra -Werror \
          -I"$QEL_ROOT" -fsyntax-only -; then
      echo "include/QELEngine.h does not compile as $standard for $arch"
      status=1
    fi
  done
done

# The code shown in the documentation compiles: whole files as they are, statements inside of a function.
code=$(mktemp -d)
trap 'rm -rf "$code"' EXIT
python3 - "$code" "$QEL_ROOT"/docs/*.md "$QEL_ROOT/README.md" <<'PYTHON'
import pathlib, re, sys
count = 0
for page in sys.argv[2:]:
    for block in re.findall(r"```cpp\n(.*?)```", pathlib.Path(page).read_text(encoding="utf-8"), re.S):
        if "#include" not in block:
            block = f'#include "QELEngine.h"\nvoid Shown(HQELENGINE hEngine)\n{{\n{block}}}\n'
        pathlib.Path(sys.argv[1], f"shown{count}.cpp").write_text(block)
        count += 1
sys.exit(0 if count else "no code found in the documentation")
PYTHON
[ $? = 0 ] || status=1
for file in "$code"/*.cpp; do
  i686-w64-mingw32-g++-posix -std=c++20 -Wall -Wextra -I"$QEL_ROOT/include" -fsyntax-only "$file" || status=1
done
exit $status
