/* Links against an installed zylcc and checks two conversions whose answers
 * follow from the definition by hand. Exit status 0 means the package works. */
#include <stdio.h>
#include <string.h>

#include "zylcc.h"

static int failures = 0;

static void Expect(int ok, const char* what) {
  if (!ok) {
    fprintf(stderr, "consumer: FAILED: %s\n", what);
    ++failures;
  }
}

int main(void) {
  const ZylLibraryVersion* version = zylccGetLibVersion();
  Expect(version != NULL, "zylccGetLibVersion returns a record");
  if (version != NULL) {
    Expect(version->major == 2021, "major version is 2021");
    printf("consumer: linked %s %s\n", version->name, version->version);
  }

  /* 2x2 gray image, rows padded to 8 bytes. For R = G = B = g the luma sum is
   * g * (19595 + 38470 + 7471) = g * 65536, so Y = (g * 65536 + 32768) >> 16 = g,
   * and both differences B - Y and R - Y are 0, so U = V = 0 + 128.
   * Back again, u = v = 0: R = B = (g << 16 + 32768) >> 16 = g, G = (g << 16) >> 16 = g. */
  static const Zyl8u kGray[4] = {0, 77, 128, 255};
  Zyl8u rgb[2 * 8];
  Zyl8u yuv[2 * 8];
  Zyl8u back[2 * 8];
  memset(rgb, 0xEE, sizeof rgb);
  memset(yuv, 0xEE, sizeof yuv);
  memset(back, 0xEE, sizeof back);
  for (int i = 0; i < 4; ++i) {
    Zyl8u* px = rgb + (i / 2) * 8 + (i % 2) * 3;
    px[0] = px[1] = px[2] = kGray[i];
  }
  const ZylSize roi = {2, 2};
  Expect(zyliRGBToYUV_8u_C3R(rgb, 8, yuv, 8, roi) == zylStsOk, "RGBToYUV returns zylStsOk");
  Expect(zyliYUVToRGB_8u_C3R(yuv, 8, back, 8, roi) == zylStsOk, "YUVToRGB returns zylStsOk");
  for (int i = 0; i < 4; ++i) {
    const Zyl8u* out = yuv + (i / 2) * 8 + (i % 2) * 3;
    Expect(out[0] == kGray[i] && out[1] == 128 && out[2] == 128, "gray gives Y = g, U = V = 128");
    Expect(memcmp(back + (i / 2) * 8 + (i % 2) * 3, rgb + (i / 2) * 8 + (i % 2) * 3, 3) == 0,
           "gray survives the round trip");
  }
  /* Row padding (bytes 6 and 7 of each row) is not part of the image. */
  Expect(yuv[6] == 0xEE && yuv[7] == 0xEE && yuv[14] == 0xEE && yuv[15] == 0xEE,
         "row padding untouched");
  Expect(zyliRGBToYUV_8u_C3R(NULL, 8, yuv, 8, roi) == zylStsNullPtrErr, "null source gives -8");

  if (failures == 0) printf("consumer: ok\n");
  return failures == 0 ? 0 : 1;
}
