#!/usr/bin/env bash
# Installs a build twice, as its users install it: at its configured prefix
# under DESTDIR, as a package does (CI configures /usr, which on Debian puts
# the library in the multiarch folder lib/x86_64-linux-gnu), and at a
# staging prefix given at install time. In each tree, with no
# LD_LIBRARY_PATH: every installed program finds its libraries there, the
# installed kestu-script runs a script, kestu-copy --exact copies, and a
# small program with no C++ standard of its own builds against the tree
# through find_package(Kestu) and through pkg-config, and runs, and
# examples/hello builds through find_package(Kestu COMPONENTS Desktop) and
# finds every library it loads. The controls' manifest is installed, is
# what the installed kestu-registry prints, and every icon it names is there.
set -euo pipefail
build=${1:-build/release}
root=$(cd "$(dirname "$0")/.." && pwd)
build=$(cd "$root" && cd "$build" && pwd)
unset LD_LIBRARY_PATH

fail() {
  echo "install: $*" >&2
  exit 1
}
cached() {
  sed -n "s/^$1:[A-Z]*=//p" "$build/CMakeCache.txt"
}
prefix=$(cached CMAKE_INSTALL_PREFIX)
libdir=$(cached CMAKE_INSTALL_LIBDIR)
bindir=$(cached CMAKE_INSTALL_BINDIR)
libexecdir=$(cached CMAKE_INSTALL_LIBEXECDIR)
# An empty data folder in the cache means the data root's (share).
datadir=$(cached CMAKE_INSTALL_DATADIR)
datadir=${datadir:-$(cached CMAKE_INSTALL_DATAROOTDIR)}
for dir in "$libdir" "$bindir" "$libexecdir" "$datadir"; do
  case $dir in
    /* | "") fail "the build's install folders must be relative to the prefix (got '$dir')" ;;
  esac
done

work=$build/install-check
rm -rf "$work"
mkdir -p "$work"

# check TREE OUT: the installed prefix at TREE; OUT for what it builds.
check() {
  local tree=$1 out=$2
  mkdir -p "$out"
  [ -f "$tree/$libdir/libkestu.so" ] || fail "no libkestu.so in $tree/$libdir"

  # Every installed program and library finds what it needs; libkestu.so
  # is the one of this tree, not one installed elsewhere on the machine.
  local file deps kestu
  while IFS= read -r file; do
    deps=$(ldd "$file" 2>&1) || fail "ldd $file: $deps"
    if grep -q "not found" <<<"$deps"; then
      fail "$file: $(grep "not found" <<<"$deps" | head -1 | xargs)"
    fi
    kestu=$(sed -n 's/^\s*libkestu\.so[^ ]* => \([^ ]*\) .*/\1/p' <<<"$deps")
    if [ -n "$kestu" ] && [ "$(dirname "$(realpath "$kestu")")" != "$(realpath "$tree/$libdir")" ]; then
      fail "$file loads $kestu, not the libkestu.so of $tree/$libdir"
    fi
  done < <(find "$tree/$bindir" "$tree/$libdir" "$tree/$libexecdir" -type f \
             \( -perm -u+x -o -name '*.so*' \) 2>/dev/null)

  local got
  got=$(printf 'new KestuNumberEdit amount 120 120 1215 315\nset amount.Value 42\nget amount.Value\n' |
        "$tree/$bindir/kestu-script" -) || fail "$tree/$bindir/kestu-script did not run"
  grep -qx "amount.Value = 42" <<<"$got" || fail "kestu-script printed: $got"

  # The registry's files: a toolbox or an index reads them without running
  # anything, so they must say what the installed library says.
  local share=$tree/$datadir/kestu icon
  [ -f "$share/controls.json" ] || fail "no controls.json in $share"
  "$tree/$bindir/kestu-registry" --json | cmp -s - "$share/controls.json" ||
    fail "$share/controls.json is not what $tree/$bindir/kestu-registry --json prints"
  while IFS= read -r icon; do
    [ -s "$share/$icon" ] || fail "$share/controls.json names $icon, which is not installed"
  done < <(sed -n 's/^ *"icon_file": "\(.*\)",\{0,1\}$/\1/p' "$share/controls.json")
  [ -n "$(ls "$share/icons")" ] || fail "no toolbox icons in $share/icons"

  # kestu-copy finds its --exact companion in the library's program folder.
  printf 'installed' >"$out/one"
  "$tree/$bindir/kestu-copy" -q --exact "$out/one" "$out/two" ||
    fail "$tree/$bindir/kestu-copy --exact failed"
  cmp -s "$out/one" "$out/two" || fail "kestu-copy --exact did not copy"

  cmake -S "$root/examples/consumer" -B "$out/cmake" -DCMAKE_PREFIX_PATH="$tree" >/dev/null ||
    fail "examples/consumer does not configure against $tree"
  grep -q "^Kestu_DIR:PATH=$tree/$libdir/cmake/Kestu\$" "$out/cmake/CMakeCache.txt" ||
    fail "examples/consumer found $(sed -n 's/^Kestu_DIR:PATH=//p' "$out/cmake/CMakeCache.txt"), not $tree"
  cmake --build "$out/cmake" >/dev/null || fail "examples/consumer does not build against $tree"
  "$out/cmake/consumer" >/dev/null || fail "examples/consumer built by CMake does not run"

  # A program with real windows: the Desktop component, whose library finds
  # libkestu.so beside itself.
  cmake -S "$root/examples/hello" -B "$out/hello" -DCMAKE_PREFIX_PATH="$tree" >/dev/null &&
    cmake --build "$out/hello" >/dev/null ||
    fail "examples/hello does not build against $tree with find_package(Kestu COMPONENTS Desktop)"
  if ldd "$out/hello/hello" | grep -q "not found"; then
    fail "examples/hello built against $tree: $(ldd "$out/hello/hello" | grep "not found" | head -1 | xargs)"
  fi

  local flags
  flags=$(PKG_CONFIG_PATH=$tree/$libdir/pkgconfig pkg-config --cflags --libs kestu) ||
    fail "pkg-config finds no kestu in $tree/$libdir/pkgconfig"
  # shellcheck disable=SC2086  # the flags are words
  g++ "$root/examples/consumer/main.cpp" $flags -o "$out/consumer-pc" ||
    fail "examples/consumer does not build with pkg-config's flags: $flags"
  # pkg-config's flags give the program no run path: it is told where to look.
  LD_LIBRARY_PATH=$tree/$libdir "$out/consumer-pc" >/dev/null ||
    fail "examples/consumer built with pkg-config does not run"
}

DESTDIR=$work/destdir cmake --install "$build" >/dev/null
check "$work/destdir$prefix" "$work/at-prefix"
cmake --install "$build" --prefix "$work/stage" >/dev/null
check "$work/stage" "$work/staged"

# The script engine is kestu-script's and kestu-run's, not the library's:
# a program that links libkestu.so carries none of it.
if nm -D --defined-only "$work/stage/$libdir/libkestu.so" | grep -q "ScriptRunner\|TraceWriter\|ScriptLexer"; then
  fail "libkestu.so exports the script engine"
fi
echo "install: at $prefix (under DESTDIR) and at a staging prefix, library in $libdir:" \
  "programs run without LD_LIBRARY_PATH; find_package(Kestu) and pkg-config both build and run;" \
  "no script engine in libkestu.so; kestu-copy --exact runs; the controls' manifest and icons installed"
