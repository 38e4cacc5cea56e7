# shellcheck shell=bash
# Shared by the scripts that read the public headers with clang, which is not what builds us:
# `folder` is where the headers are, `headers` their names in it, `as_elsewhere` the flags.
# Sourced with the folder as first argument. Ends with 77 where clang is not installed.
folder=$(cd "${1:-/nowhere}" 2>/dev/null && pwd) || {
  echo "which folder? (see --help)" >&2
  exit 2
}
for tool in clang++-14 clang-query-14 pkg-config; do
  command -v $tool >/dev/null || {
    echo "SKIP: $tool is not installed (clang-tools-14 brings clang along)"
    exit 77
  }
done
cd "$folder" || exit 2
mapfile -t headers < <(find . -name '*.h' | sed 's,^\./,,' | LC_ALL=C sort)
[ ${#headers[@]} -gt 0 ] || {
  echo "no headers in $folder" >&2
  exit 2
}
read -ra as_elsewhere < <(pkg-config --cflags-only-I Qt5Widgets Qt5Network | sed 's/-I/-isystem /g')
as_elsewhere+=(-I "$folder" -x c++ -std=c++17)

everything=$(mktemp --suffix=.cpp)
trap 'rm -f "$everything"' EXIT
printf '#include "%s"\n' "${headers[@]}" >"$everything"
