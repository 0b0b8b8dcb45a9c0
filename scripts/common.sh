# Shared by the scripts of this folder: where things are, and which Debian packages a job needs.
# Each script works from any folder and can be run again; packages are only fetched when one is missing.

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
jobs=$(nproc 2>/dev/null || echo 2)

build_packages=(cmake ninja-build g++ ccache qt6-base-dev libsqlite3-dev libcli11-dev unixodbc-dev tdsodbc)
test_packages=("${build_packages[@]}" libgtest-dev clang clang-format clang-tidy mdbtools)
bench_packages=("${build_packages[@]}" libbenchmark-dev)

say() { printf '\n== %s\n' "$*"; }

as_root() {
  if [ "$(id -u)" = 0 ]; then
    "$@"
  elif command -v sudo >/dev/null; then
    sudo "$@"
  else
    echo "These packages are missing and can only be installed as root or with sudo: ${*: -1}" >&2
    exit 1
  fi
}

is_installed() { [ "$(dpkg-query -W -f='${db:Status-Status}' "$1" 2>/dev/null)" = installed ]; }

# Installs those of the named packages that are not there.
need() {
  local missing=() package
  for package in "$@"; do is_installed "$package" || missing+=("$package"); done
  [ ${#missing[@]} = 0 ] && return
  say "Installing ${missing[*]}"
  as_root apt-get update -qq
  as_root env DEBIAN_FRONTEND=noninteractive apt-get install -y -qq --no-install-recommends "${missing[@]}"
}

# Two programs that read Access files and know nothing of this one: mdbtools, and a package of npm that is
# kept in build/reader_check. Without a network the tests that need the package say that they are skipped.
need_other_readers() {
  command -v node >/dev/null && command -v npm >/dev/null || need nodejs npm
  local from=$root/tests/platform/access/reader_check folder=$root/build/reader_check
  mkdir -p "$folder"
  if ! { [ -d "$folder/node_modules/mdb-reader" ] && cmp -s "$from/package-lock.json" "$folder/package-lock.json"; }; then
    say "Fetching mdb-reader"
    cp "$from/package.json" "$from/package-lock.json" "$folder"
    (cd "$folder" && npm ci --no-audit --no-fund --loglevel=error) || echo "mdb-reader could not be fetched; its tests are skipped." >&2
  fi
  cp "$from/compare.mjs" "$folder"
}

# configure FOLDER OPTION... and compile FOLDER [TARGET...], below build/.
configure() {
  local folder=$root/build/$1
  shift
  cmake -S "$root" -B "$folder" -G Ninja "$@" >/dev/null
}

compile() {
  local folder=$root/build/$1
  shift
  cmake --build "$folder" --parallel "$jobs" "${@/#/--target=}"
}

build_release() {
  need "${build_packages[@]}"
  say "Building the release"
  configure release -DCMAKE_BUILD_TYPE=Release -DORVA_TESTS=OFF
  compile release
}
