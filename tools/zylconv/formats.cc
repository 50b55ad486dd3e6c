#include "formats.h"

#include <algorithm>
#include <chrono>
#include <climits>
#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include "shapes.h"
#include "zylcc.h"

namespace zylconv {

// ------------------------------------------------------------ the table --
//
// A new family adds its formats here: a name, a line for `list`, the file
// layout, and one or more routes built from the call shapes of shapes.h. The
// demo and `convert` pick every row up by themselves. Where a family offers
// several exports for the same file layout, list each as a route: the demo
// times them all and checks that they write and read the same bytes.
const std::vector<Format>& Formats() {
  static const std::vector<Format> formats = {
      {"png", "PNG image, 8-bit RGB (RGBA when the picture has alpha)", Container::kPng, {}, {}},
      {"ppm", "binary PPM image (P6, maxval 255)", Container::kPpm, {}, {}},
      {"rgb",
       "raw RGB 8-bit interleaved: R, G, B",
       Container::kRaw,
       {{3}},
       {{EncodeCopy(), DecodeCopy()}}},
      {"rgba",
       "raw RGBA 8-bit interleaved: R, G, B, A",
       Container::kRaw,
       {{4}},
       {{EncodeCopy(), DecodeCopy()}}},
      {"yuv",
       "raw YUV 4:4:4 interleaved: Y, U, V",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToYUV_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliYUVToRGB_8u_C3R))},
        {EncodeAC4(ZYLCONV_EXPORT(zyliRGBToYUV_8u_AC4R)),
         DecodeC3C4(ZYLCONV_EXPORT(zyliYUVToRGB_8u_C3C4R))}}},
      {"yuva",
       "raw YUVA 4:4:4 interleaved: Y, U, V, A",
       Container::kRaw,
       {{4}},
       {{EncodeAC4(ZYLCONV_EXPORT(zyliRGBToYUV_8u_AC4R)),
         DecodeAC4(ZYLCONV_EXPORT(zyliYUVToRGB_8u_AC4R))}}},
      {"yuv444p",
       "raw planar YUV 4:4:4: Y plane, U plane, V plane",
       Container::kRaw,
       {{1}, {1}, {1}},
       {{EncodeC3P3(ZYLCONV_EXPORT(zyliRGBToYUV_8u_C3P3R)),
         DecodeP3C3(ZYLCONV_EXPORT(zyliYUVToRGB_8u_P3C3R))},
        {EncodeP3(ZYLCONV_EXPORT(zyliRGBToYUV_8u_P3R)),
         DecodeP3(ZYLCONV_EXPORT(zyliYUVToRGB_8u_P3R))}}},
      {"yuva444p",
       "raw planar YUV 4:4:4 with alpha: Y, U, V, A planes",
       Container::kRaw,
       {{1}, {1}, {1}, {1}},
       {{EncodeAC4P4(ZYLCONV_EXPORT(zyliRGBToYUV_8u_AC4P4R)),
         DecodeP3C3(ZYLCONV_EXPORT(zyliYUVToRGB_8u_P3C3R))}}},
      // Gray keeps only luma, so its round trip through RGB is lossy by nature.
      {"gray",
       "raw 8-bit gray, one plane (0.299 R + 0.587 G + 0.114 B; read back as R = G = B)",
       Container::kRaw,
       {{1}},
       {{EncodeC3C1(ZYLCONV_EXPORT(zyliRGBToGray_8u_C3C1R)),
         DecodeC1C3(ZYLCONV_EXPORT(zyliGrayToRGB_8u_C1C3R))}}},
      // Every route of a YCbCr format runs the same BT.601 studio-range arithmetic, whichever
      // layout or channel order the exports take, so they must write and read the same bytes.
      {"ycbcr",
       "raw YCbCr 4:4:4 interleaved, BT.601 studio range: Y, Cb, Cr",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliYCbCrToRGB_8u_C3R))},
        {EncodeAC4(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_AC4R)),
         DecodeAC4(ZYLCONV_EXPORT(zyliYCbCrToRGB_8u_AC4R))}}},
      {"ycbcr444p",
       "raw planar YCbCr 4:4:4, BT.601 studio range: Y plane, Cb plane, Cr plane",
       Container::kRaw,
       {{1}, {1}, {1}},
       {{EncodeC3P3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_C3P3R)),
         DecodeP3C3(ZYLCONV_EXPORT(zyliYCbCrToRGB_8u_P3C3R))},
        {EncodeP3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_P3R)),
         DecodeP3(ZYLCONV_EXPORT(zyliYCbCrToRGB_8u_P3R))},
        {EncodeAC4P3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_AC4P3R)),
         DecodeP3C4(ZYLCONV_EXPORT(zyliYCbCrToRGB_8u_P3C4R))},
        {EncodeC3P3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_C3P3R)),
         DecodeP3C3Bgr(ZYLCONV_EXPORT(zyliYCbCrToBGR_8u_P3C3R))},
        {EncodeAC4P3(ZYLCONV_EXPORT(zyliRGBToYCbCr_8u_AC4P3R)),
         DecodeP3C4Bgr(ZYLCONV_EXPORT(zyliYCbCrToBGR_8u_P3C4R))}}},
      // PhotoYCC keeps headroom above white (white is Y = 181) and its inverse reads back about
      // 0.969 of the input, so the round trip darkens by up to 12 levels, by definition.
      {"ycc",
       "raw PhotoYCC interleaved, 8-bit: Y, C1, C2 (chroma centred on 156 and 137)",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToYCC_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliYCCToRGB_8u_C3R))}}},
      // 8-bit YCoCg halves Co and Cg to fit a byte, so its round trip may miss by one level.
      {"ycocg",
       "raw planar YCoCg 4:4:4, 8-bit: Y plane, Co plane, Cg plane (Co and Cg offset by 128)",
       Container::kRaw,
       {{1}, {1}, {1}},
       {{EncodeC3P3(ZYLCONV_EXPORT(zyliRGBToYCoCg_8u_C3P3R)),
         DecodeP3C3(ZYLCONV_EXPORT(zyliYCoCgToRGB_8u_P3C3R))}}},
      // Hue models and CIE spaces: 8-bit codes of single-precision arithmetic. HLS rows
      // round in blocks of 8 (4 with alpha) and truncate or round differently in the last
      // pixels of a row, so routes agree byte for byte at widths that are whole blocks.
      {"hls",
       "raw HLS interleaved, 8-bit: H (a full turn is 0..255), L, S",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToHLS_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliHLSToRGB_8u_C3R))},
        {EncodePixels(ZYLCONV_EXPORT(zyliRGBToHLS_8u_AC4R), Source::kRgba),
         DecodePixels(ZYLCONV_EXPORT(zyliHLSToRGB_8u_AC4R), Source::kRgba)},
        {EncodePixels(ZYLCONV_EXPORT(zyliBGRToHLS_8u_AC4R), Source::kBgra),
         DecodePixels(ZYLCONV_EXPORT(zyliHLSToRGB_8u_AC4R), Source::kRgba)}}},
      {"hls444p",
       "raw planar HLS, 8-bit: H plane, L plane, S plane",
       Container::kRaw,
       {{1}, {1}, {1}},
       {{EncodeC3P3(ZYLCONV_EXPORT(zyliBGRToHLS_8u_C3P3R), Source::kBgr),
         DecodeP3C3Bgr(ZYLCONV_EXPORT(zyliHLSToBGR_8u_P3C3R))}}},
      {"hsv",
       "raw HSV interleaved, 8-bit: H (a full turn is 0..255), S, V",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToHSV_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliHSVToRGB_8u_C3R))},
        {EncodePixels(ZYLCONV_EXPORT(zyliRGBToHSV_8u_AC4R), Source::kRgba),
         DecodePixels(ZYLCONV_EXPORT(zyliHSVToRGB_8u_AC4R), Source::kRgba)}}},
      // The CIE rows read the picture as linear RGB with a D65 white.
      {"lab",
       "raw CIE Lab interleaved, 8-bit: L * 2.55, a + 128, b + 128 (D65, linear RGB)",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToLab_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliLabToRGB_8u_C3R))},
        {EncodePixels(ZYLCONV_EXPORT(zyliBGRToLab_8u_C3R), Source::kBgr),
         DecodePixels(ZYLCONV_EXPORT(zyliLabToBGR_8u_C3R), Source::kBgr)}}},
      {"luv",
       "raw CIE LUV interleaved, 8-bit: L * 2.55, (u + 134) * 255/354, (v + 140) * 255/262",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToLUV_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliLUVToRGB_8u_C3R))},
        {EncodePixels(ZYLCONV_EXPORT(zyliRGBToLUV_8u_AC4R), Source::kRgba),
         DecodePixels(ZYLCONV_EXPORT(zyliLUVToRGB_8u_AC4R), Source::kRgba)},
        {EncodePixels(ZYLCONV_EXPORT(zyliBGRToLUV_8u_C3R), Source::kBgr),
         DecodePixels(ZYLCONV_EXPORT(zyliLUVToBGR_8u_C3R), Source::kBgr)}}},
      // XYZ is not normalised by the white: white is (242, 254, 255) with Z clamped from 277.
      {"xyz",
       "raw CIE XYZ interleaved, 8-bit (D65 matrix, Z clamped to 255)",
       Container::kRaw,
       {{3}},
       {{EncodeC3(ZYLCONV_EXPORT(zyliRGBToXYZ_8u_C3R)),
         DecodeC3(ZYLCONV_EXPORT(zyliXYZToRGB_8u_C3R))},
        {EncodePixels(ZYLCONV_EXPORT(zyliRGBToXYZ_8u_AC4R), Source::kRgba),
         DecodePixels(ZYLCONV_EXPORT(zyliXYZToRGB_8u_AC4R), Source::kRgba)}}},
      // Subsampled YCbCr. Routes of one matrix run the same arithmetic from and to differently
      // ordered pixels, so they agree byte for byte both ways; where the library has no decoder
      // of a layout and matrix, a decoder of the same matrix reads the planes reordered (Y, Cr,
      // Cb files) or split (pairs into planes).
      {"i420",
       "raw planar YCbCr 4:2:0 (I420): Y, then Cb and Cr at half width and height; BT.601 "
       "studio range, or BT.709 studio range with --matrix 709",
       Container::kRaw,
       {{1}, {1, 2, 2}, {1, 2, 2}},
       {{EncodeSubP3(ZYLCONV_EXPORT(zyliRGBToYCbCr420_8u_C3P3R), Source::kRgb),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToRGB_8u_P3C3R), Source::kRgb)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr420_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_8u_P3C3R), Source::kBgr)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr420_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_8u_P3C4R), Source::kBgra)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr420_709CSC_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr), true},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr420_709CSC_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr), true}}},
      {"yv12",
       "raw planar YCrCb 4:2:0 (YV12): Y, then Cr and Cb at half width and height; BT.601 "
       "studio range, or BT.709 studio range with --matrix 709",
       Container::kRaw,
       {{1}, {1, 2, 2}, {1, 2, 2}},
       {{EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCrCb420_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCrCb420ToRGB_8u_P3C4R), Source::kRgba)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCrCb420_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_8u_P3C4R), Source::kBgra,
                     /*swap_chroma=*/true)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliRGBToYCrCb420_8u_AC4P3R), Source::kRgba),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToRGB_8u_P3C3R), Source::kRgb,
                     /*swap_chroma=*/true)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCrCb420_709CSC_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr,
                     /*swap_chroma=*/true),
         true},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCrCb420_709CSC_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr,
                     /*swap_chroma=*/true),
         true}}},
      {"nv12",
       "raw YCbCr 4:2:0 (NV12): Y, then Cb Cr pairs at half width and height; BT.601 studio "
       "range, or BT.709 studio range with --matrix 709",
       Container::kRaw,
       {{1}, {2, 2, 2}},
       {{EncodeSubP2(ZYLCONV_EXPORT(zyliRGBToYCbCr420_8u_C3P2R), Source::kRgb),
         DecodeSubP2(ZYLCONV_EXPORT(zyliYCbCr420ToRGB_8u_P2C3R), Source::kRgb)},
        {EncodeSubP2(ZYLCONV_EXPORT(zyliBGRToYCbCr420_8u_C3P2R), Source::kBgr),
         DecodeSubP2(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_8u_P2C3R), Source::kBgr)},
        {EncodeSubP2(ZYLCONV_EXPORT(zyliBGRToYCbCr420_8u_AC4P2R), Source::kBgra),
         DecodeSubP2(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_8u_P2C4R), Source::kBgra)},
        {EncodeSubP2(ZYLCONV_EXPORT(zyliRGBToYCbCr420_8u_C4P2R), Source::kRgba),
         DecodeSubP2(ZYLCONV_EXPORT(zyliYCbCr420ToRGB_8u_P2C4R), Source::kRgba)},
        {EncodeSubP2(ZYLCONV_EXPORT(zyliBGRToYCbCr420_709CSC_8u_C3P2R), Source::kBgr),
         DecodeSubP2AsP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr), true},
        {EncodeSubP2(ZYLCONV_EXPORT(zyliBGRToYCbCr420_709CSC_8u_AC4P2R), Source::kBgra),
         DecodeSubP2AsP3(ZYLCONV_EXPORT(zyliYCbCr420ToBGR_709CSC_8u_P3C3R), Source::kBgr), true}}},
      {"yuy2",
       "raw packed YCbCr 4:2:2 (YUY2): Y0 Cb Y1 Cr per pixel pair, BT.601 studio range",
       Container::kRaw,
       {{4, 2, 1}},
       {{EncodeSubC2(ZYLCONV_EXPORT(zyliRGBToYCbCr422_8u_C3C2R), Source::kRgb),
         DecodeSubC2(ZYLCONV_EXPORT(zyliYCbCr422ToRGB_8u_C2C3R), Source::kRgb)},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliRGBToYCbCr422_8u_C3C2R), Source::kRgb),
         DecodeSubC2(ZYLCONV_EXPORT(zyliYCbCr422ToRGB_8u_C2C4R), Source::kRgba)},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliBGRToYCbCr422_8u_C3C2R), Source::kBgr),
         DecodeSubC2(ZYLCONV_EXPORT(zyliYCbCr422ToBGR_8u_C2C3R), Source::kBgr)},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliBGRToYCbCr422_8u_AC4C2R), Source::kBgra),
         DecodeSubC2(ZYLCONV_EXPORT(zyliYCbCr422ToBGR_8u_C2C4R), Source::kBgra)},
        {EncodeSubP3C2(ZYLCONV_EXPORT(zyliRGBToYCbCr422_8u_P3C2R)),
         DecodeSubC2P3(ZYLCONV_EXPORT(zyliYCbCr422ToRGB_8u_C2P3R))}}},
      {"uyvy",
       "raw packed YCbCr 4:2:2 (UYVY): Cb Y0 Cr Y1 per pixel pair; BT.601 studio range with "
       "3-tap chroma, or BT.709 full range (1..254) with --matrix 709",
       Container::kRaw,
       {{4, 2, 1}},
       {{EncodeSubC2(ZYLCONV_EXPORT(zyliRGBToCbYCr422_8u_C3C2R), Source::kRgb),
         DecodeSubC2(ZYLCONV_EXPORT(zyliCbYCr422ToRGB_8u_C2C3R), Source::kRgb)},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliBGRToCbYCr422_8u_AC4C2R), Source::kBgra),
         DecodeSubC2(ZYLCONV_EXPORT(zyliCbYCr422ToBGR_8u_C2C4R), Source::kBgra)},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliBGRToCbYCr422_709HDTV_8u_C3C2R), Source::kBgr),
         DecodeSubC2(ZYLCONV_EXPORT(zyliCbYCr422ToBGR_709HDTV_8u_C2C3R), Source::kBgr), true},
        {EncodeSubC2(ZYLCONV_EXPORT(zyliBGRToCbYCr422_709HDTV_8u_AC4C2R), Source::kBgra),
         DecodeSubC2(ZYLCONV_EXPORT(zyliCbYCr422ToBGR_709HDTV_8u_C2C4R), Source::kBgra), true}}},
      {"yuv422p",
       "raw planar YCbCr 4:2:2: Y, then Cb and Cr at half width, BT.601 studio range",
       Container::kRaw,
       {{1}, {1, 2, 1}, {1, 2, 1}},
       {{EncodeSubP3(ZYLCONV_EXPORT(zyliRGBToYCbCr422_8u_C3P3R), Source::kRgb),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr422ToRGB_8u_P3C3R), Source::kRgb)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr422_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr422ToBGR_8u_P3C3R), Source::kBgr)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr422_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr422ToRGB_8u_P3C3R), Source::kRgb)}}},
      {"yuv411p",
       "raw planar YCbCr 4:1:1: Y, then Cb and Cr at quarter width, BT.601 studio range",
       Container::kRaw,
       {{1}, {1, 4, 1}, {1, 4, 1}},
       {{EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr411_8u_C3P3R), Source::kBgr),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr411ToBGR_8u_P3C3R), Source::kBgr)},
        {EncodeSubP3(ZYLCONV_EXPORT(zyliBGRToYCbCr411_8u_AC4P3R), Source::kBgra),
         DecodeSubP3(ZYLCONV_EXPORT(zyliYCbCr411ToBGR_8u_P3C4R), Source::kBgra)}}},
  };
  return formats;
}

const Format* FindFormat(const std::string& name) {
  for (const Format& f : Formats()) {
    if (f.name == name) return &f;
  }
  return nullptr;
}

// ------------------------------------------------------------- RawImage --

void CheckDimensions(int64_t width, int64_t height) {
  if (width < 1 || height < 1) {
    throw Error("image size " + std::to_string(width) + "x" + std::to_string(height) + " is empty");
  }
  if (width > kMaxDimension || height > kMaxDimension || width * height > kMaxPixels) {
    throw Error("image size " + std::to_string(width) + "x" + std::to_string(height) +
                " is too large (at most " + std::to_string(kMaxDimension) + " a side and " +
                std::to_string(kMaxPixels) + " pixels)");
  }
}

namespace {

int CeilDiv(int a, int b) { return a / b + (a % b != 0); }

}  // namespace

size_t RawImage::FileBytes(int width, int height, const std::vector<PlaneLayout>& planes) {
  size_t total = 0;
  for (const PlaneLayout& p : planes) {
    const size_t w = CeilDiv(width, p.x_sub);
    const size_t h = CeilDiv(height, p.y_sub);
    // A row must be addressable with an int step, and the file with size_t.
    if (w * p.channels > static_cast<size_t>(INT_MAX) ||
        h > (SIZE_MAX - total) / (w * p.channels)) {
      throw Error("image of " + std::to_string(width) + "x" + std::to_string(height) +
                  " is too large");
    }
    total += w * p.channels * h;
  }
  return total;
}

RawImage::RawImage(int width, int height, std::vector<PlaneLayout> planes)
    : width_(width), height_(height), planes_(std::move(planes)) {
  size_t offset = 0;
  for (int i = 0; i < PlaneCount(); ++i) {
    offsets_.push_back(offset);
    offset += static_cast<size_t>(Step(i)) * static_cast<size_t>(PlaneHeight(i));
  }
  bytes_.assign(FileBytes(width, height, planes_), 0);
}

int RawImage::PlaneWidth(int plane) const { return CeilDiv(width_, planes_[plane].x_sub); }
int RawImage::PlaneHeight(int plane) const { return CeilDiv(height_, planes_[plane].y_sub); }
int RawImage::Step(int plane) const { return PlaneWidth(plane) * planes_[plane].channels; }

bool RawImage::HasAlpha() const {
  // Four bytes per two pixels (packed 4:2:2) is not RGBA.
  if (PlaneCount() == 1) return planes_[0].channels == 4 && planes_[0].x_sub == 1;
  return PlaneCount() == 4 && planes_[3].channels == 1;
}

void RawImage::StoreAlpha(const Picture& pic) {
  if (!HasAlpha()) return;
  const size_t n = pic.Pixels();
  const bool interleaved = PlaneCount() == 1;
  uint8_t* dst = Plane(interleaved ? 0 : 3);
  const size_t stride = interleaved ? 4 : 1;
  const size_t first = interleaved ? 3 : 0;
  for (size_t i = 0; i < n; ++i) {
    dst[i * stride + first] = pic.alpha.empty() ? 255 : pic.alpha[i];
  }
}

void RawImage::LoadAlpha(Picture& pic) const {
  if (!HasAlpha()) return;
  const size_t n = pic.Pixels();
  const bool interleaved = PlaneCount() == 1;
  const uint8_t* src = Plane(interleaved ? 0 : 3);
  const size_t stride = interleaved ? 4 : 1;
  const size_t first = interleaved ? 3 : 0;
  pic.alpha.resize(n);
  for (size_t i = 0; i < n; ++i) pic.alpha[i] = src[i * stride + first];
}

// ----------------------------------------------------------- CallRunner --

const char* StatusName(ZylStatus status) {
  switch (status) {
    case zylStsOk:
      return "zylStsOk";
    case zylStsNegativeSrc:
      return "zylStsNegativeSrc";
    case zylStsDoubleSize:
      return "zylStsDoubleSize";
    case zylStsBadArgErr:
      return "zylStsBadArgErr";
    case zylStsSizeErr:
      return "zylStsSizeErr";
    case zylStsNullPtrErr:
      return "zylStsNullPtrErr";
    case zylStsStepErr:
      return "zylStsStepErr";
    case zylStsNumChannelsErr:
      return "zylStsNumChannelsErr";
    case zylStsGammaRangeErr:
      return "zylStsGammaRangeErr";
    case zylStsDitherLevelsErr:
      return "zylStsDitherLevelsErr";
    case zylStsNoiseRangeErr:
      return "zylStsNoiseRangeErr";
    case zylStsDitherTypeErr:
      return "zylStsDitherTypeErr";
    default:
      return "unknown status";
  }
}

void CallRunner::Call(const char* export_name, const std::function<ZylStatus()>& call) {
  static std::set<std::string> warned;  // one warning line per export is enough
  std::vector<double> times;
  for (int run = 0; run < runs_; ++run) {
    const auto start = std::chrono::steady_clock::now();
    const ZylStatus status = call();
    const auto stop = std::chrono::steady_clock::now();
    if (status < 0) {
      throw Error(std::string(export_name) + " failed with status " + std::to_string(status) +
                  " (" + StatusName(status) + ")");
    }
    if (status > 0 && warned.insert(export_name).second) {
      std::fprintf(stderr, "zylconv: warning: %s returned status %d (%s)\n", export_name,
                   static_cast<int>(status), StatusName(status));
    }
    times.push_back(std::chrono::duration<double>(stop - start).count());
  }
  std::nth_element(times.begin(), times.begin() + times.size() / 2, times.end());
  seconds_ += times[times.size() / 2];
}

// ------------------------------------------------------ encode / decode --

RawImage Encode(const Format& format, const Route& route, const Picture& pic, CallRunner& runner) {
  RawImage raw(pic.width, pic.height, format.planes);
  if (!route.encode.writes_alpha) raw.StoreAlpha(pic);
  route.encode.run(pic, raw, runner);
  return raw;
}

Picture Decode(const Route& route, const RawImage& raw, CallRunner& runner) {
  Picture pic;
  pic.width = raw.width();
  pic.height = raw.height();
  pic.rgb.assign(pic.Pixels() * 3, 0);
  route.decode.run(raw, pic, runner);
  raw.LoadAlpha(pic);
  return pic;
}

}  // namespace zylconv
