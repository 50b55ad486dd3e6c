#include "shapes.h"

#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

namespace zylconv {
namespace {

// A format row paired with a shape that cannot drive it is a mistake in the
// table, not in the user's input; still an error line rather than a crash.
void Require(bool ok, const char* shape, const char* export_name) {
  if (!ok) {
    throw Error(std::string("internal: the layout of this format does not fit ") + shape + " (" +
                export_name + ")");
  }
}

bool FullResolutionPlanes(const RawImage& raw, int count) {
  if (raw.PlaneCount() < count) return false;
  for (int i = 0; i < count; ++i) {
    const PlaneLayout& p = raw.Layout(i);
    if (p.channels != 1 || p.x_sub != 1 || p.y_sub != 1) return false;
  }
  return true;
}

bool InterleavedPlane(const RawImage& raw) {
  const PlaneLayout& p = raw.Layout(0);
  return raw.PlaneCount() == 1 && (p.channels == 3 || p.channels == 4) && p.x_sub == 1 &&
         p.y_sub == 1;
}

// Copies the first three channels of n pixels; a fourth destination channel
// keeps what it held, so alpha placed there beforehand survives.
void CopyThreeChannels(const uint8_t* src, int src_channels, uint8_t* dst, int dst_channels,
                       size_t n) {
  for (size_t i = 0; i < n; ++i) {
    std::memcpy(dst + i * dst_channels, src + i * src_channels, 3);
  }
}

// The raw interleaved plane as pixels of `channels` bytes: the plane itself
// when it already has that many, else its first three channels repacked into
// temp (a fourth channel there starts as `fill`).
const uint8_t* AsChannels(const RawImage& raw, const Picture& pic, int channels, uint8_t fill,
                          std::vector<uint8_t>& temp) {
  const int have = raw.Layout(0).channels;
  if (have == channels) return raw.Plane(0);
  temp.assign(pic.Pixels() * channels, fill);
  CopyThreeChannels(raw.Plane(0), have, temp.data(), channels, pic.Pixels());
  return temp.data();
}

std::vector<uint8_t> HubToRgba(const Picture& pic) {
  const size_t n = pic.Pixels();
  std::vector<uint8_t> rgba(n * 4);
  for (size_t i = 0; i < n; ++i) {
    std::memcpy(&rgba[i * 4], &pic.rgb[i * 3], 3);
    rgba[i * 4 + 3] = pic.alpha.empty() ? 255 : pic.alpha[i];
  }
  return rgba;
}

void RgbaToHub(const std::vector<uint8_t>& rgba, Picture& pic) {
  const size_t n = pic.Pixels();
  pic.alpha.resize(n);
  for (size_t i = 0; i < n; ++i) {
    std::memcpy(&pic.rgb[i * 3], &rgba[i * 4], 3);
    pic.alpha[i] = rgba[i * 4 + 3];
  }
}

// Interleaved RGB <-> three planes held back to back in one buffer.
std::vector<uint8_t> SplitPlanes(const Picture& pic) {
  const size_t n = pic.Pixels();
  std::vector<uint8_t> planes(n * 3);
  for (size_t i = 0; i < n; ++i) {
    for (size_t c = 0; c < 3; ++c) planes[c * n + i] = pic.rgb[i * 3 + c];
  }
  return planes;
}

void MergePlanes(const std::vector<uint8_t>& planes, Picture& pic) {
  const size_t n = pic.Pixels();
  for (size_t i = 0; i < n; ++i) {
    for (size_t c = 0; c < 3; ++c) pic.rgb[i * 3 + c] = planes[c * n + i];
  }
}

int Step(int width, int channels) { return width * channels; }

// Pixels of B, G, R (and A) into the hub's R, G, B (and alpha).
void BgrToHub(const std::vector<uint8_t>& bgr, int channels, Picture& pic) {
  const size_t n = pic.Pixels();
  if (channels == 4) pic.alpha.resize(n);
  for (size_t i = 0; i < n; ++i) {
    const uint8_t* px = &bgr[i * channels];
    pic.rgb[i * 3] = px[2];
    pic.rgb[i * 3 + 1] = px[1];
    pic.rgb[i * 3 + 2] = px[0];
    if (channels == 4) pic.alpha[i] = px[3];
  }
}

// A planar decoder's output at `channels` bytes a pixel; exports that take an alpha
// argument write 255 (opaque) into the fourth.
template <class Fn>
std::vector<uint8_t> RunPlanarDecoder(const Export<Fn>& e, const RawImage& raw, const Picture& pic,
                                      int channels, CallRunner& runner) {
  Require(FullResolutionPlanes(raw, 3), "a planar decoder", e.name);
  std::vector<uint8_t> out(pic.Pixels() * channels);
  const Zyl8u* const src[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
  runner.Call(e.name, [&] {
    if constexpr (std::is_same_v<Fn, PlanarToInterleavedAlphaFn>) {
      return e.fn(src, raw.Step(0), out.data(), Step(pic.width, channels), pic.Size(), 255);
    } else {
      return e.fn(src, raw.Step(0), out.data(), Step(pic.width, channels), pic.Size());
    }
  });
  return out;
}

}  // namespace

Encoder EncodeC3(Export<InterleavedFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(InterleavedPlane(raw), "an interleaved 3-channel encoder", e.name);
            const int channels = raw.Layout(0).channels;
            std::vector<uint8_t> temp;
            uint8_t* dst = raw.Plane(0);
            if (channels != 3) {
              temp.resize(pic.Pixels() * 3);
              dst = temp.data();
            }
            runner.Call(e.name, [&] {
              return e.fn(pic.rgb.data(), Step(pic.width, 3), dst, Step(pic.width, 3), pic.Size());
            });
            if (channels != 3) CopyThreeChannels(dst, 3, raw.Plane(0), channels, pic.Pixels());
          }};
}

Encoder EncodeAC4(Export<InterleavedFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(InterleavedPlane(raw), "a four-channel encoder", e.name);
            const int channels = raw.Layout(0).channels;
            const std::vector<uint8_t> rgba = HubToRgba(pic);
            std::vector<uint8_t> temp;
            uint8_t* dst = raw.Plane(0);
            if (channels != 4) {
              temp.assign(pic.Pixels() * 4, 0);
              dst = temp.data();
            }
            runner.Call(e.name, [&] {
              return e.fn(rgba.data(), Step(pic.width, 4), dst, Step(pic.width, 4), pic.Size());
            });
            if (channels != 4) CopyThreeChannels(dst, 4, raw.Plane(0), channels, pic.Pixels());
          }};
}

Encoder EncodeC3P3(Export<InterleavedToPlanarFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar encoder", e.name);
            Zyl8u* const dst[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            runner.Call(e.name, [&] {
              return e.fn(pic.rgb.data(), Step(pic.width, 3), dst, raw.Step(0), pic.Size());
            });
          }};
}

Encoder EncodeAC4P4(Export<InterleavedToPlanarFn> e) {
  return {{e.name},
          [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar encoder with alpha", e.name);
            const std::vector<uint8_t> rgba = HubToRgba(pic);
            std::vector<uint8_t> unused_alpha;
            uint8_t* alpha_plane;
            if (raw.PlaneCount() >= 4) {
              alpha_plane = raw.Plane(3);
            } else {
              unused_alpha.resize(pic.Pixels());
              alpha_plane = unused_alpha.data();
            }
            Zyl8u* const dst[4] = {raw.Plane(0), raw.Plane(1), raw.Plane(2), alpha_plane};
            runner.Call(e.name, [&] {
              return e.fn(rgba.data(), Step(pic.width, 4), dst, raw.Step(0), pic.Size());
            });
          },
          /*writes_alpha=*/true};
}

// Only three plane pointers: an export that drops alpha must not need a fourth.
Encoder EncodeAC4P3(Export<InterleavedToPlanarFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar encoder", e.name);
            const std::vector<uint8_t> rgba = HubToRgba(pic);
            Zyl8u* const dst[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            runner.Call(e.name, [&] {
              return e.fn(rgba.data(), Step(pic.width, 4), dst, raw.Step(0), pic.Size());
            });
          }};
}

Encoder EncodeP3(Export<PlanarFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar encoder", e.name);
            const std::vector<uint8_t> planes = SplitPlanes(pic);
            const size_t n = pic.Pixels();
            const Zyl8u* const src[3] = {&planes[0], &planes[n], &planes[2 * n]};
            Zyl8u* const dst[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            runner.Call(e.name, [&] { return e.fn(src, pic.width, dst, raw.Step(0), pic.Size()); });
          }};
}

Decoder DecodeC3(Export<InterleavedFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(InterleavedPlane(raw), "an interleaved 3-channel decoder", e.name);
            std::vector<uint8_t> temp;
            const uint8_t* src = AsChannels(raw, pic, 3, 0, temp);
            runner.Call(e.name, [&] {
              return e.fn(src, Step(pic.width, 3), pic.rgb.data(), Step(pic.width, 3), pic.Size());
            });
          }};
}

Decoder DecodeAC4(Export<InterleavedFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(InterleavedPlane(raw), "a four-channel decoder", e.name);
            std::vector<uint8_t> temp;
            const uint8_t* src = AsChannels(raw, pic, 4, 255, temp);
            // The export leaves the fourth channel alone: start it opaque.
            std::vector<uint8_t> rgba(pic.Pixels() * 4, 255);
            runner.Call(e.name, [&] {
              return e.fn(src, Step(pic.width, 4), rgba.data(), Step(pic.width, 4), pic.Size());
            });
            RgbaToHub(rgba, pic);
          }};
}

Decoder DecodeC3C4(Export<InterleavedAlphaFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(InterleavedPlane(raw), "an interleaved 3-channel decoder", e.name);
            std::vector<uint8_t> temp;
            const uint8_t* src = AsChannels(raw, pic, 3, 0, temp);
            std::vector<uint8_t> rgba(pic.Pixels() * 4);
            runner.Call(e.name, [&] {
              return e.fn(src, Step(pic.width, 3), rgba.data(), Step(pic.width, 4), pic.Size(),
                          255);
            });
            RgbaToHub(rgba, pic);
          }};
}

Decoder DecodeP3C3(Export<PlanarToInterleavedFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar decoder", e.name);
            const Zyl8u* const src[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            runner.Call(e.name, [&] {
              return e.fn(src, raw.Step(0), pic.rgb.data(), Step(pic.width, 3), pic.Size());
            });
          }};
}

Decoder DecodeP3C4(Export<PlanarToInterleavedAlphaFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            RgbaToHub(RunPlanarDecoder(e, raw, pic, 4, runner), pic);
          }};
}

Decoder DecodeP3C3Bgr(Export<PlanarToInterleavedFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            BgrToHub(RunPlanarDecoder(e, raw, pic, 3, runner), 3, pic);
          }};
}

Decoder DecodeP3C4Bgr(Export<PlanarToInterleavedAlphaFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            BgrToHub(RunPlanarDecoder(e, raw, pic, 4, runner), 4, pic);
          }};
}

Decoder DecodeP3(Export<PlanarFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar decoder", e.name);
            const size_t n = pic.Pixels();
            std::vector<uint8_t> planes(n * 3);
            const Zyl8u* const src[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            Zyl8u* const dst[3] = {&planes[0], &planes[n], &planes[2 * n]};
            runner.Call(e.name, [&] { return e.fn(src, raw.Step(0), dst, pic.width, pic.Size()); });
            MergePlanes(planes, pic);
          }};
}

Encoder EncodeCopy() {
  return {{}, [](const Picture& pic, RawImage& raw, CallRunner&) {
            Require(InterleavedPlane(raw), "a repack", "no export");
            CopyThreeChannels(pic.rgb.data(), 3, raw.Plane(0), raw.Layout(0).channels,
                              pic.Pixels());
          }};
}

Decoder DecodeCopy() {
  return {{}, [](const RawImage& raw, Picture& pic, CallRunner&) {
            Require(InterleavedPlane(raw), "a repack", "no export");
            CopyThreeChannels(raw.Plane(0), raw.Layout(0).channels, pic.rgb.data(), 3,
                              pic.Pixels());
          }};
}

}  // namespace zylconv
