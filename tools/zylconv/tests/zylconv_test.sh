#!/bin/sh
# Behaviour of the zylconv command line: the demo, a round trip through the
# raw and image formats, and the error contract (non-zero exit, exactly one
# stderr line starting with "zylconv: ", never a crash).
#
# usage: zylconv_test.sh PATH_TO_ZYLCONV WORK_DIR
set -u
Z=$1
W=$2
rm -rf "$W"
mkdir -p "$W" || exit 1
cd "$W" || exit 1
failures=0
fail() {
  echo "FAIL: $*" >&2
  failures=$((failures + 1))
}

# Writes the decimal byte values $2... to file $1.
bytes() {
  out=$1
  shift
  printf "$(printf '\\%03o' "$@")" >"$out"
}
# Prints a file as decimal bytes separated by single spaces.
dump() { od -An -tu1 -v "$1" | tr -s ' \n' '  ' | sed 's/^ //; s/ $//'; }

# Runs zylconv expecting success and a silent stderr.
ok() {
  "$Z" "$@" >last.out 2>last.err || fail "zylconv $* exited $?: $(cat last.err)"
  [ -s last.err ] && fail "zylconv $* wrote to stderr: $(cat last.err)"
}

# ---------------------------------------------------------------- demo --
ok demo --out demo
png_sig="137 80 78 71 13 10 26 10"
[ -f demo/source.png ] || fail "demo wrote no source.png"
rows=$(grep -c 'zyli.* ok$' last.out)
[ "$rows" -ge 6 ] || fail "demo printed $rows checked conversions, expected at least 6"
grep -q 'MISMATCH\|LOST' last.out && fail "demo found disagreeing routes: $(cat last.out)"
pngs=0
for f in demo/*.png; do
  pngs=$((pngs + 1))
  [ "$(head -c 8 "$f" | od -An -tu1 | tr -s ' ' ' ' | sed 's/^ //; s/ $//')" = "$png_sig" ] ||
    fail "$f is not a PNG"
done
[ "$pngs" -eq $((rows + 1)) ] || fail "demo wrote $pngs PNGs for $rows conversions plus the source"

# --------------------------------------------------------- round trips --
# A 9x2 picture: 18 pixels, so a kernel working in blocks of 8 uses both its
# block body and its per-pixel tail. Pixels 0, 1, 2 and 8 are gray, pixel 3
# pure blue; the other colors keep V = 0.877 (R - Y) + 128 inside 0..255, i.e.
# -146 <= R - Y <= 144, so no chroma clamps and the bound below holds. (Pure
# red, green, cyan and magenta do clamp V and come back up to ~35 off.)
bytes tiny.rgb \
  0 0 0  128 128 128  255 255 255  0 0 255  224 172 105  255 128 0  60 140 60  255 255 0 \
  200 200 200 \
  141 85 36  66 40 30  255 224 196  30 60 200  180 20 90  10 200 120  200 60 40  90 90 250 \
  17 34 51
ok convert tiny.rgb tiny.png --size 9x2
ok convert tiny.png tiny.yuv
# Known YUV bytes, by hand from the 16.16 arithmetic:
#   gray g: S = 65536 g, so Y = g and both differences round to 0: (g, 128, 128).
#   blue (0, 0, 255): S = 7471 * 255 = 1905105; Y = (S + 32768) >> 16 = 29;
#     dB = (16711680 - S + 32768) >> 16 = 226, U = (226 * 32244 >> 16) + 128
#     = 111 + 128 = 239; dR = (-S + 32768) >> 16 = -29,
#     V = (-29 * 57475 >> 16) + 128 = -26 + 128 = 102.
yuv=$(dump tiny.yuv)
case "$yuv" in
  "0 128 128 128 128 128 255 128 128 29 239 102 "*" 200 128 128 "*) ;;
  *) fail "tiny.yuv holds unexpected bytes: $yuv" ;;
esac
ok convert tiny.yuv back.png --size 9x2
ok convert back.png back.ppm
ok convert back.ppm back.rgb
# Bound: with Y = ky + ey, |ey| <= 1/2 (ky the exact luma) and a difference
# d = (R - ky) + er, |er| <= 1/2, the stored v = d * 57475 / 65536 - fv,
# 0 <= fv < 1. Decoding, R' = round(Y + v * 74711 / 65536), where the product
# of the two weights is 1 - 2.2e-4, so R' - R = round(ey + er - fv * 1.14 +
# O(0.04)), inside (-2.2, 1.1): at most 2. B the same with 32244 and 133169
# (fu * 2.032, product 1 - 2.5e-4, |B - ky| <= 226): inside (-3.1, 1.1), at
# most 3. G' = floor(G + ey - 0.394 (u error) - 0.581 (v error) + ~0.1) stays
# inside (-1, 2): at most 1. A clamp of R', G', B' to 0..255 only moves them
# toward the true value. Gray has no differences at all, so it is exact.
od -An -tu1 -v tiny.rgb | tr -s ' ' '\n' | grep -v '^$' >a.txt
od -An -tu1 -v back.rgb | tr -s ' ' '\n' | grep -v '^$' >b.txt
result=$(paste a.txt b.txt | awk '
  { d = $1 - $2; if (d < 0) d = -d; if (d > max) max = d
    px = int((NR - 1) / 3); if ((px == 0 || px == 1 || px == 2 || px == 3 || px == 8) && d) bad = 1 }
  END { printf "%d %d %d", NR, max, bad }')
set -- $result
[ "$1" -eq 54 ] || fail "round trip gave $1 bytes, expected 54"
[ "$2" -le 3 ] || fail "round trip error $2 exceeds the bound of 3"
[ "$3" -eq 0 ] || fail "gray or blue pixels did not come back exactly"

# Alpha rides through the planar format and a PNG. AC4P4R copies alpha into
# plane 3; gray and blue come back exactly (above), so the whole RGBA file is
# reproduced: Y 29 128 255, U 239 128 128, V 102 128 128, A 10 128 250.
bytes alpha.rgba 0 0 255 10  128 128 128 128  255 255 255 250
ok convert alpha.rgba alpha.yuva444p --size 3x1
[ "$(dump alpha.yuva444p)" = "29 128 255 239 128 128 102 128 128 10 128 250" ] ||
  fail "alpha.yuva444p holds $(dump alpha.yuva444p)"
ok convert alpha.yuva444p alpha.png --size 3x1
ok convert alpha.png alpha-back.rgba
cmp -s alpha.rgba alpha-back.rgba || fail "RGBA did not survive yuva444p and PNG"

# Studio-range YCbCr, by hand from the 16.16 arithmetic. Blue: Y = (6423 * 255
# + 1081344) >> 16 = 41, Cb = (28770 * 255 + 8421376) >> 16 = 240, Cr =
# (-4653 * 255 + 8421376) >> 16 = 110; white: Y = (56296 * 255 + 1081344) >> 16
# = 235; gray 128: Y = (56296 * 128 + 1081344) >> 16 = 126; gray chroma is 128.
# Back: the inverse truncates, so white returns as 254; blue (base 41 * 76284 -
# 1220544 = 1907100, B = (1907100 + 112 * 132186) >> 16 = 255, R and G below 1)
# and gray 126 ((126 * 76284 - 1220544) >> 16 = 128) return exactly.
bytes ycc.rgb 0 0 255  255 255 255  128 128 128
ok convert ycc.rgb ycc.ycbcr444p --size 3x1
[ "$(dump ycc.ycbcr444p)" = "41 235 126 240 128 128 110 128 128" ] ||
  fail "ycc.ycbcr444p holds $(dump ycc.ycbcr444p)"
ok convert ycc.ycbcr444p ycc-back.rgb --size 3x1
[ "$(dump ycc-back.rgb)" = "0 0 255 254 254 254 128 128 128" ] ||
  fail "ycc-back.rgb holds $(dump ycc-back.rgb)"

# Subsampled YCbCr, by hand. 2x2 red green / blue red: Y = (16843 R +
# 33030 G + 6423 B + 0x108000) >> 16 = 82, 145, 41, 82; block sums R 510, G 255, B 255:
# Cb = (-9699 * 510 - 19071 * 255 + 28770 * 255 + 0x2008000) >> 18 = 118, Cr = (28770 * 510
# - 24117 * 255 - 4653 * 255 + 0x2008000) >> 18 = 156. BT.709 (--matrix 709): Y = (11993 R +
# 40239 G + 4063 B + 0x108000) >> 16 = 63, 173, 32; Cb = (-6619 * 510 - 22151 * 255 + 28770
# * 255 + 0x2008000) >> 18 = 121, Cr = 156. yv12 stores Cr first, nv12 Cb Cr pairs.
bytes sub.rgb 255 0 0  0 255 0  0 0 255  255 0 0
ok convert sub.rgb sub.i420 --size 2x2
[ "$(dump sub.i420)" = "82 145 41 82 118 156" ] || fail "sub.i420 holds $(dump sub.i420)"
ok convert sub.rgb sub709.i420 --size 2x2 --matrix 709
[ "$(dump sub709.i420)" = "63 173 32 63 121 156" ] || fail "sub709.i420 holds $(dump sub709.i420)"
ok convert sub.rgb sub.yv12 --size 2x2
[ "$(dump sub.yv12)" = "82 145 41 82 156 118" ] || fail "sub.yv12 holds $(dump sub.yv12)"
ok convert sub.rgb sub.nv12 --size 2x2
[ "$(dump sub.nv12)" = "82 145 41 82 118 156" ] || fail "sub.nv12 holds $(dump sub.nv12)"
# An odd size is padded with its last column and row, so every chroma sample is written:
# 3x1 red green blue -> blocks (red green)x2, Cb = (-28770 * 510 + 0x2008000) >> 18 = 72,
# Cr = (4653 * 510 + 0x2008000) >> 18 = 137; and blue x4, Cb = (28770 * 1020 + 0x2008000)
# >> 18 = 240, Cr = (-4653 * 1020 + 0x2008000) >> 18 = 110.
bytes odd.rgb 255 0 0  0 255 0  0 0 255
ok convert odd.rgb odd.i420 --size 3x1
[ "$(dump odd.i420)" = "82 145 41 72 240 137 110" ] || fail "odd.i420 holds $(dump odd.i420)"
# And back: R = (76284 Y + 104595 Cr' - 1187776) >> 16, G = (76284 Y - 25690 Cb' - 53281 Cr'
# - 1187776) >> 16, B = (76284 Y + 132186 Cb' - 1187776) >> 16, clamped. sub: Cb' -10, Cr' 28;
# 76284 Y - 1187776 = 5067512, 9873404, 1939868 for Y 82, 145, 41: R 7996172 -> 122, 12802064
# -> 195, 4868528 -> 74; G (+ 256900 - 1491868) 3832544 -> 58, 8638436 -> 131, 704900 -> 10;
# B (- 1321860) 3745652 -> 57, 8551544 -> 130, 618008 -> 9. yv12 and nv12 hold the same.
for f in sub.i420 sub.yv12 sub.nv12; do
  ok convert $f $f.rgb --size 2x2
  [ "$(dump $f.rgb)" = "122 58 57 195 131 130 74 10 9 122 58 57" ] ||
    fail "$f.rgb holds $(dump $f.rgb)"
done
# BT.709 (--matrix 709 on the input): weights 117506, 13959, 34931, 138412; Cb' -7, Cr' 28;
# 76284 Y - 1187776 = 3618116, 12009356, 1253312 for Y 63, 173, 32: R (+ 3290168) -> 105, 233,
# 69; G (+ 97713 - 978068) 2737761 -> 41, 11129001 -> 169, 372957 -> 5; B (- 968884) -> 40,
# 168, 4.
ok convert sub709.i420 sub709.rgb --size 2x2 --matrix 709
[ "$(dump sub709.rgb)" = "105 41 40 233 169 168 69 5 4 105 41 40" ] ||
  fail "sub709.rgb holds $(dump sub709.rgb)"
# The odd 3x1 file is decoded at 4x2 from its rounded-up chroma and cropped: pixels 0, 1 take
# Cb' -56, Cr' 9: R (+ 941355) 6008867 -> 91, 10814759 -> 165; G (+ 1438640 - 479529)
# 6026623 -> 91, 10832515 -> 165; B (- 7402416) -> 0, 2470988 -> 37. Pixel 2: Cb' 112,
# Cr' -18: R 1939868 - 1882710 -> 0, G 1939868 - 2877280 + 959058 -> 0, B 16744700 -> 255.
ok convert odd.i420 odd-back.rgb --size 3x1
[ "$(dump odd-back.rgb)" = "91 91 0 165 165 37 0 0 255" ] ||
  fail "odd-back.rgb holds $(dump odd-back.rgb)"

# --------------------------------------------------------- bad inputs --
# Each must exit non-zero with one stderr line starting "zylconv: ".
bad() {
  "$Z" "$@" >/dev/null 2>bad.err
  rc=$?
  if [ "$rc" -eq 0 ] || [ "$rc" -gt 125 ]; then
    fail "zylconv $* exited $rc"
  elif [ "$(wc -l <bad.err)" -ne 1 ] || ! head -n 1 bad.err | grep -q '^zylconv: '; then
    fail "zylconv $* did not print one error line: $(cat bad.err)"
  fi
}
printf 'not a png\n' >text.png
head -c 60 tiny.png >truncated.png
printf 'P6\n9 2\n65535\n' >deep.ppm
printf 'P6\n9 2\n255\nshort' >short.ppm
bad frobnicate
bad convert tiny.rgb out.x --from nosuch --to rgb --size 9x2
bad convert tiny.rgb out.bin --size 9x2
bad convert tiny.yuv out.png
bad convert tiny.yuv out.png --size 9by2
bad convert tiny.yuv out.png --size 0x2
bad convert tiny.yuv out.png --size 8x2
bad convert tiny.yuv out.png --size 9x2 --bogus 1
bad convert tiny.png out.rgb --size 9x2
bad convert missing.png out.rgb
bad convert text.png out.rgb
bad convert truncated.png out.rgb
bad convert deep.ppm out.rgb
bad convert short.ppm out.rgb
bad convert tiny.png no-such-dir/out.rgb
bad demo --out tiny.png/sub
bad convert sub.i420 out.png --size 3x3
bad convert sub.yv12 out.png --size 2x2 --matrix 2020
bad convert sub.rgb out.yuy2 --size 2x2 --matrix 709
bad convert sub.rgb out.i420 --size 2x2 --matrix 2020
bad convert sub.rgb out.png --size 2x2 --matrix 709

if [ "$failures" -ne 0 ]; then
  echo "$failures check(s) failed" >&2
  exit 1
fi
echo "zylconv: all checks passed"
