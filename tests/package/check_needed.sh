#!/usr/bin/env bash
# A shared library must carry its SONAME and need nothing beyond the C/C++
# runtime (and, for libzylcc, libzylcore): Highway is used header-only.
#   check_needed.sh READELF LIBRARY SONAME [EXTRA_ALLOWED_REGEX]
set -euo pipefail
readelf=$1 lib=$2 soname=$3 extra=${4:-}

allowed='^(libc|libm|libstdc\+\+|libgcc_s|libzylcore)\.so\.[0-9]+$'
allowed+='|^ld-linux[-a-z0-9_.]*\.so\.[0-9]+$'
[[ -n "$extra" ]] && allowed="$allowed|$extra"

dynamic=$("$readelf" -d "$lib")
status=0
actual_soname=$(sed -nE 's/.*\(SONAME\).*\[(.*)\].*/\1/p' <<<"$dynamic")
if [[ "$actual_soname" != "$soname" ]]; then
  echo "${lib##*/}: SONAME is '$actual_soname', expected '$soname'"
  status=1
fi
needed=$(sed -nE 's/.*\(NEEDED\).*\[(.*)\].*/\1/p' <<<"$dynamic")
unexpected=$(grep -vE "$allowed" <<<"$needed" || true)
if [[ -n "$unexpected" ]]; then
  printf '%s needs libraries beyond the C/C++ runtime:\n%s\n' "${lib##*/}" "$unexpected"
  status=1
fi
[[ $status -eq 0 ]] && echo "${lib##*/}: SONAME $soname, needs: ${needed//$'\n'/ }"
exit $status
