#!/usr/bin/env bash
# The dynamic symbols a shared library defines must be exactly the functions its
# public header declares: no internal symbol leaks out, no declared one is missing.
#   check_exports.sh NM CC LIBRARY HEADER [IGNORE_REGEX]
# IGNORE_REGEX drops symbols a sanitizer runtime adds to instrumented builds.
set -euo pipefail
nm=$1 cc=$2 lib=$3 header=$4 ignore=${5:-}
tmp=$(mktemp -d)
trap 'rm -rf "$tmp"' EXIT

# Preprocess first so that names in comments, or in branches for other
# platforms, are not mistaken for declarations.
"$cc" -E -P -x c "$header" |
  grep -oE '\bzyl[A-Za-z0-9_]*[[:space:]]*\(' | sed -E 's/[[:space:]]*\($//' |
  sort -u >"$tmp/declared"
"$nm" -D --defined-only "$lib" | awk 'NF >= 3 { print $3 }' |
  { if [[ -n "$ignore" ]]; then grep -vE "$ignore" || true; else cat; fi; } |
  sort -u >"$tmp/exported"

if [[ ! -s "$tmp/declared" ]]; then
  echo "no declarations found in $header" >&2
  exit 1
fi
extra=$(comm -13 "$tmp/declared" "$tmp/exported")
missing=$(comm -23 "$tmp/declared" "$tmp/exported")
if [[ -n "$extra$missing" ]]; then
  [[ -n "$extra" ]] && printf 'exported by %s but not declared in %s:\n%s\n' \
    "${lib##*/}" "${header##*/}" "$extra"
  [[ -n "$missing" ]] && printf 'declared in %s but not exported by %s:\n%s\n' \
    "${header##*/}" "${lib##*/}" "$missing"
  exit 1
fi
echo "${lib##*/}: $(wc -l <"$tmp/exported") symbols, all declared in ${header##*/}"
