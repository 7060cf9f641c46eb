# Shared by ./run and ./test: where the tree is, and what the machine lacks.
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root" || exit 1

say() { printf '\n== %s\n' "$*"; }

# install_packages SECTION...: the Debian packages of these sections of cmake/packages.txt.
install_packages() {
  command -v dpkg-query >/dev/null || return 0  # not Debian: the build says what is missing
  local wanted missing=() package
  wanted=$(awk -v wanted=" $* " '
    /^#/ || /^$/ { next }
    /^\[/ { gsub(/[][]/, ""); in_section = index(wanted, " " $0 " ") > 0; next }
    in_section { print }' cmake/packages.txt)
  for package in $wanted; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'ok installed' ||
      missing+=("$package")
  done
  [ ${#missing[@]} -eq 0 ] && return 0
  say "installing ${missing[*]}"
  local as_root=()
  [ "$(id -u)" -eq 0 ] || as_root=(sudo)
  "${as_root[@]}" apt-get update -qq &&
    DEBIAN_FRONTEND=noninteractive "${as_root[@]}" apt-get install -y -qq \
      --no-install-recommends "${missing[@]}" >/dev/null || {
      echo "could not install: ${missing[*]}" >&2
      exit 1
    }
}

# build PRESET [TARGET...]: configure when needed and build; silent when there is nothing to do.
build() {
  local preset=$1
  shift
  mkdir -p build
  cmake --preset "$preset" >"build/$preset.log" 2>&1 || {
    cat "build/$preset.log" >&2
    exit 1
  }
  cmake --build --preset "$preset" -- -n "$@" | grep -q 'no work to do' && return
  say "build $preset"
  cmake --build --preset "$preset" -- "$@" || exit 1
}
