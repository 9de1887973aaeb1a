#!/usr/bin/env bash
# Installs a build into a staging prefix and builds a small program against
# it twice: through find_package(Kestu) and through pkg-config.
set -euo pipefail
build=${1:-build/release}
root=$(cd "$(dirname "$0")/.." && pwd)
stage=$root/$build/stage
rm -rf "$stage" "$root/$build/consumer"
cmake --install "$root/$build" --prefix "$stage" >/dev/null
cmake -S "$root/examples/consumer" -B "$root/$build/consumer" -DCMAKE_PREFIX_PATH="$stage" >/dev/null
cmake --build "$root/$build/consumer" >/dev/null
LD_LIBRARY_PATH=$stage/lib "$root/$build/consumer/consumer"
PKG_CONFIG_PATH=$stage/lib/pkgconfig \
  g++ -std=c++20 "$root/examples/consumer/main.cpp" $(PKG_CONFIG_PATH=$stage/lib/pkgconfig pkg-config --cflags --libs kestu) \
  -o "$root/$build/consumer/consumer-pc"
LD_LIBRARY_PATH=$stage/lib "$root/$build/consumer/consumer-pc"
# The script engine is kestu-script's and kestu-run's, not the library's:
# a program that links libkestu.so carries none of it.
if nm -D --defined-only "$stage/lib/libkestu.so" | grep -q "ScriptRunner\|TraceWriter\|ScriptLexer"; then
  echo "install: libkestu.so exports the script engine" >&2
  exit 1
fi
# kestu-copy finds its --exact companion in the library's program folder.
printf 'installed' > "$root/$build/consumer/one"
"$stage/bin/kestu-copy" -q --exact "$root/$build/consumer/one" "$root/$build/consumer/two"
cmp -s "$root/$build/consumer/one" "$root/$build/consumer/two" || {
  echo "install: kestu-copy --exact did not copy" >&2
  exit 1
}
echo "install: find_package(Kestu) and pkg-config both build and run; no script engine in libkestu.so; kestu-copy --exact runs"
