#!/usr/bin/env bash
# exchange.sh BUILD_LINUX BUILD_WINDOWS: compound files made and changed on one system are listed
# alike on the other, by gsf and by olefile; so are documents, by 7z too, which are also the same
# when the other system opened and saved them. Compound files of other programs (the examples of
# libspreadsheet-parseexcel-perl, or those in ZDM_SAMPLES) are listed as gsf sees them.
set -u
linux=$1/bin/storage_exchange
windows=$2/bin/storage_exchange.exe
linux_documents=$1/bin/document_exchange
windows_documents=$2/bin/document_exchange.exe
wine=$(cd "$(dirname "$0")" && pwd)/../cmake/run-under-wine
work=$(mktemp -d "${TMPDIR:-/tmp}/zdm-exchange.XXXXXX")
trap 'rm -rf "$work"' EXIT
failures=0

fail() {
  echo "FAILED: $1"
  failures=$((failures + 1))
}

# Wine sees the root of the file system as drive Z.
on_windows() { "$wine" "$windows" "$1" "Z:$2" | tr -d '\r'; }
on_linux() { "$linux" "$1" "$2"; }

# same WHAT FILE...: the files are equal and not empty.
same() {
  local what=$1 first=$2
  shift 2
  [ -s "$first" ] || fail "$what: nothing listed"
  for other in "$@"; do
    diff "$first" "$other" >"$work/diff" || { fail "$what"; head -5 "$work/diff"; }
  done
}

# What other programs see: sorted, since they list in orders of their own.
by_olefile() {
  /usr/bin/python3 - "$1" <<'PYTHON'
import sys, zlib, olefile
with olefile.OleFileIO(sys.argv[1]) as file:
    for path in file.listdir(streams=True, storages=False):
        data = file.openstream(path).read()
        sys.stdout.buffer.write(b"%08x %d %s\n" % (zlib.crc32(data), len(data), "/".join(path).encode()))
PYTHON
}
by_gsf() { # size and path; gsf list prints "f [time] <size> <path>", also for a root
           # without elements
  gsf list "$1" | /usr/bin/python3 -c '
import re, sys
for line in sys.stdin.buffer:
    match = re.match(rb"f\s+(?:[-\d]+ [:\d]+\s+)?(\d+) (.*)\n", line)
    if match and match[2] != b"*root*": sys.stdout.buffer.write(match[1] + b" " + match[2] + b"\n")'
}
by_7z() { # size and path
  7z l -slt "$1" | tr -d '\r' | awk '
    /^-----/ { listed = 1 }
    listed && /^Path = / { path = substr($0, 8) }
    listed && /^Size = [0-9]/ { print substr($0, 8), path }'
}
sorted() { LC_ALL=C sort "$1"; }
without_crc() { cut -d' ' -f2- "$1" | LC_ALL=C sort; }

on_linux write "$work/linux" || fail "write on Linux"
on_windows write "$work/windows" || fail "write on Windows"
for step in made changed; do
  for file in linux windows; do
    on_linux list "$work/$file" >"$work/$file.linux" || fail "$file, $step: list on Linux"
    on_windows list "$work/$file" >"$work/$file.windows" || fail "$file, $step: list on Windows"
    by_olefile "$work/$file" | sorted /dev/stdin >"$work/$file.olefile"
    by_gsf "$work/$file" | sorted /dev/stdin >"$work/$file.gsf"
    sorted "$work/$file.linux" >"$work/$file.sorted"
    without_crc "$work/$file.linux" >"$work/$file.sizes"
    same "$file, $step: olefile" "$work/$file.sorted" "$work/$file.olefile"
    same "$file, $step: gsf" "$work/$file.sizes" "$work/$file.gsf"
  done
  same "made on either system, $step" "$work/linux.linux" "$work/linux.windows" \
    "$work/windows.linux" "$work/windows.windows"
  # Each file is changed on the system that did not make it.
  [ $step = changed ] && break
  on_windows change "$work/linux" || fail "change on Windows"
  on_linux change "$work/windows" || fail "change on Linux"
done

# Documents of every class: alike on either system, wherever they were made or saved last.
documents_on_windows() { "$wine" "$windows_documents" "$@"; }
"$linux_documents" write "$work/doc-linux" || fail "document on Linux"
documents_on_windows write "Z:$work/doc-windows" || fail "document on Windows"
"$linux_documents" save "$work/doc-windows" "$work/doc-windows-linux" || fail "saving on Linux"
documents_on_windows save "Z:$work/doc-linux" "Z:$work/doc-linux-windows" || fail "saving on Windows"
for file in doc-linux doc-windows doc-linux-windows doc-windows-linux; do
  on_linux list "$work/$file" >"$work/$file.linux" || fail "$file: list on Linux"
  on_windows list "$work/$file" >"$work/$file.windows" || fail "$file: list on Windows"
  by_olefile "$work/$file" | sorted /dev/stdin >"$work/$file.olefile"
  by_gsf "$work/$file" | sorted /dev/stdin >"$work/$file.gsf"
  by_7z "$work/$file" | sorted /dev/stdin >"$work/$file.7z"
  sorted "$work/$file.linux" >"$work/$file.sorted"
  without_crc "$work/$file.linux" >"$work/$file.sizes"
  same "$file: Linux and Windows" "$work/doc-linux.linux" "$work/$file.linux" "$work/$file.windows"
  same "$file: olefile" "$work/$file.sorted" "$work/$file.olefile"
  same "$file: gsf and 7z" "$work/$file.sizes" "$work/$file.gsf" "$work/$file.7z"
done
# The same system gives the same bytes.
"$linux_documents" save "$work/doc-linux" "$work/doc-again" &&
  cmp "$work/doc-linux" "$work/doc-again" || fail "a document saved again on Linux"
cmp "$work/doc-linux" "$work/doc-windows-linux" || fail "a document made on Windows, saved on Linux"
documents_on_windows save "Z:$work/doc-windows" "Z:$work/doc-again" &&
  cmp "$work/doc-windows" "$work/doc-again" || fail "a document saved again on Windows"
cmp "$work/doc-windows" "$work/doc-linux-windows" ||
  fail "a document made on Linux, saved on Windows"

# The same tree gives the same bytes.
on_linux write "$work/again" && on_linux write "$work/linux2" && cmp "$work/again" "$work/linux2" ||
  fail "two saves differ"

count=0
while IFS= read -r file; do
  [ "$(head -c 8 "$file" | od -An -tx1 | tr -d ' ')" = d0cf11e0a1b11ae1 ] || continue
  count=$((count + 1))
  on_linux list "$file" >"$work/foreign" || fail "$file"
  on_windows list "$(realpath "$file")" >"$work/foreign.windows"
  cmp -s "$work/foreign" "$work/foreign.windows" || fail "$file: otherwise on Windows"
  without_crc "$work/foreign" >"$work/foreign.sizes"
  by_gsf "$file" | sorted /dev/stdin >"$work/foreign.gsf"
  cmp -s "$work/foreign.sizes" "$work/foreign.gsf" || fail "$file: not as gsf lists it"
  while read -r crc _ path; do
    gsf cat "$file" "$path" >"$work/bytes" 2>/dev/null
    [ "$crc" = "$(/usr/bin/python3 -c 'import sys, zlib
print("%08x" % zlib.crc32(open(sys.argv[1], "rb").read()))' "$work/bytes")" ] || fail "$file: $path"
  done <"$work/foreign"
done < <(find ${ZDM_SAMPLES:-/usr/share/doc /usr/lib/R /usr/lib/libreoffice} -type f \
  \( -iname '*.doc' -o -iname '*.xls' -o -iname '*.ppt' -o -iname '*.msi' -o -iname '*.sdv' \) 2>/dev/null)
[ $count -gt 0 ] || fail "no files of other programs: is libspreadsheet-parseexcel-perl installed?"

[ $failures -eq 0 ] && echo "exchange: alike on both systems; $count files of other programs read as gsf reads them"
[ $failures -eq 0 ]
