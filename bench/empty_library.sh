#!/usr/bin/env bash
# Makes a DLL that imports what another one imports and does nothing: the floor of loading it.
#   bench/empty_library.sh i686|x86_64 LIBRARY OUT
set -eu
arch=$1 library=$2 out=$3
prefix=$arch-w64-mingw32
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
[ "$arch" = i686 ] && under=_ word=.long || { under='' word=.quad; }

# The names that the linker knows for the imports: on 32 bits with the bytes of their arguments.
names() { "$prefix-nm" "/usr/$prefix/lib/lib$1.a" 2>/dev/null | awk '$2 == "I" { print $3 }' | sort -u; }
{
  echo '.data'
  "$prefix-objdump" -p "$library" | awk '/DLL Name:/ { dll = tolower($3); sub(/\.dll$/, "", dll) }
      /^\t[0-9a-f]+\t? +[0-9]+  [A-Za-z_]/ { print dll, $NF }' |
    while read -r dll name; do
      symbol=$(names "$dll" | grep -E "^__imp_$under$name(@[0-9]+)?$" | head -n 1)
      [ -z "$symbol" ] || echo "$word $symbol"
    done
} >"$work/imports.s"
"$prefix-as" -o "$work/imports.o" "$work/imports.s"
echo 'int __stdcall DllMain(void* h, unsigned long n, void* p) { (void)h; (void)n; (void)p; return 1; }' \
  >"$work/main.c"
"$prefix-gcc" -shared -s -nostartfiles -Wl,-e,"${under}DllMain$([ "$arch" = i686 ] && echo @12 || true)" \
  -o "$out" "$work/main.c" "$work/imports.o" -lgdi32 -luser32 -lkernel32 -lmsvcrt
