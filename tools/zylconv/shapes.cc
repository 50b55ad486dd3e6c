#include "shapes.h"

#include <algorithm>
#include <cstring>
#include <functional>
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

Encoder EncodeC3C1(Export<InterleavedFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && FullResolutionPlanes(raw, 1), "a one-plane encoder",
                    e.name);
            runner.Call(e.name, [&] {
              return e.fn(pic.rgb.data(), Step(pic.width, 3), raw.Plane(0), raw.Step(0),
                          pic.Size());
            });
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

Decoder DecodeC1C3(Export<InterleavedFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && FullResolutionPlanes(raw, 1), "a one-plane decoder",
                    e.name);
            runner.Call(e.name, [&] {
              return e.fn(raw.Plane(0), raw.Step(0), pic.rgb.data(), Step(pic.width, 3),
                          pic.Size());
            });
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

// ------------------------------------------------------ subsampled encoders --

namespace {

int SourceChannels(Source source) {
  return source == Source::kRgba || source == Source::kBgra ? 4 : 3;
}

// The hub's pixels as an export reads them: R, G, B or B, G, R, with a fourth byte (alpha, or
// 255) for the four-channel exports, which never read it.
std::vector<uint8_t> HubAs(const Picture& pic, Source source) {
  const bool bgr = source == Source::kBgr || source == Source::kBgra;
  const size_t channels = static_cast<size_t>(SourceChannels(source));
  std::vector<uint8_t> out(pic.Pixels() * channels);
  for (size_t i = 0; i < pic.Pixels(); ++i) {
    const uint8_t* in = &pic.rgb[i * 3];
    uint8_t* px = &out[i * channels];
    px[0] = in[bgr ? 2 : 0];
    px[1] = in[1];
    px[2] = in[bgr ? 0 : 2];
    if (channels == 4) px[3] = pic.alpha.empty() ? 255 : pic.alpha[i];
  }
  return out;
}

// `planes` planes, the first of them luma at full resolution.
bool LumaFirst(const RawImage& raw, int planes) {
  const PlaneLayout& y = raw.Layout(0);
  return raw.PlaneCount() == planes && y.channels == 1 && y.x_sub == 1 && y.y_sub == 1;
}

// The layouts of a raw image's planes, and the picture's size rounded up to whole blocks of
// its most subsampled plane.
void WholeBlocks(const RawImage& raw, const Picture& pic, std::vector<PlaneLayout>& layouts, int& w,
                 int& h) {
  int block_x = 1, block_y = 1;
  for (int i = 0; i < raw.PlaneCount(); ++i) {
    layouts.push_back(raw.Layout(i));
    block_x = std::max(block_x, layouts.back().x_sub);
    block_y = std::max(block_y, layouts.back().y_sub);
  }
  w = (pic.width + block_x - 1) / block_x * block_x;
  h = (pic.height + block_y - 1) / block_y * block_y;
}

// The encoders convert whole chroma blocks only (an odd last column or row is left out). An
// odd size is therefore converted at the size rounded up to whole blocks, the last column and
// row repeated, and cropped back into the file, whose chroma planes have that rounded-up size
// already. `convert` gets the picture to convert and the image to write.
void ConvertWholeBlocks(const Picture& pic, RawImage& raw,
                        const std::function<void(const Picture&, RawImage&)>& convert) {
  std::vector<PlaneLayout> layouts;
  int w, h;
  WholeBlocks(raw, pic, layouts, w, h);
  if (w == pic.width && h == pic.height) {
    convert(pic, raw);
    return;
  }
  Picture padded;
  padded.width = w;
  padded.height = h;
  padded.rgb.resize(padded.Pixels() * 3);
  for (int y = 0; y < h; ++y) {
    for (int x = 0; x < w; ++x) {
      const size_t from = static_cast<size_t>(std::min(y, pic.height - 1)) * pic.width +
                          static_cast<size_t>(std::min(x, pic.width - 1));
      std::memcpy(&padded.rgb[(static_cast<size_t>(y) * w + x) * 3], &pic.rgb[from * 3], 3);
    }
  }
  RawImage whole(w, h, layouts);
  convert(padded, whole);
  for (int i = 0; i < raw.PlaneCount(); ++i) {
    for (int y = 0; y < raw.PlaneHeight(i); ++y) {
      std::memcpy(raw.Plane(i) + static_cast<size_t>(y) * raw.Step(i),
                  whole.Plane(i) + static_cast<size_t>(y) * whole.Step(i), raw.Step(i));
    }
  }
}

}  // namespace

Encoder EncodeSubP3(Export<ToSubPlanesFn> e, Source source) {
  return {{e.name}, [e, source](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(LumaFirst(raw, 3), "a subsampled three-plane encoder", e.name);
            ConvertWholeBlocks(pic, raw, [&](const Picture& p, RawImage& out) {
              const std::vector<uint8_t> src = HubAs(p, source);
              Zyl8u* const dst[3] = {out.Plane(0), out.Plane(1), out.Plane(2)};
              const int steps[3] = {out.Step(0), out.Step(1), out.Step(2)};
              runner.Call(e.name, [&] {
                return e.fn(src.data(), p.width * SourceChannels(source), dst, steps, p.Size());
              });
            });
          }};
}

Encoder EncodeSubP2(Export<ToLumaChromaFn> e, Source source) {
  return {{e.name}, [e, source](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(LumaFirst(raw, 2), "a luma and chroma-pair encoder", e.name);
            ConvertWholeBlocks(pic, raw, [&](const Picture& p, RawImage& out) {
              const std::vector<uint8_t> src = HubAs(p, source);
              runner.Call(e.name, [&] {
                return e.fn(src.data(), p.width * SourceChannels(source), out.Plane(0), out.Step(0),
                            out.Plane(1), out.Step(1), p.Size());
              });
            });
          }};
}

Encoder EncodeSubC2(Export<InterleavedFn> e, Source source) {
  return {{e.name}, [e, source](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && raw.Layout(0).x_sub == 2, "a packed 4:2:2 encoder",
                    e.name);
            ConvertWholeBlocks(pic, raw, [&](const Picture& p, RawImage& out) {
              const std::vector<uint8_t> src = HubAs(p, source);
              runner.Call(e.name, [&] {
                return e.fn(src.data(), p.width * SourceChannels(source), out.Plane(0), out.Step(0),
                            p.Size());
              });
            });
          }};
}

Encoder EncodeSubP3C2(Export<PlanarToInterleavedFn> e) {
  return {{e.name}, [e](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && raw.Layout(0).x_sub == 2, "a packed 4:2:2 encoder",
                    e.name);
            ConvertWholeBlocks(pic, raw, [&](const Picture& p, RawImage& out) {
              const std::vector<uint8_t> planes = SplitPlanes(p);
              const size_t n = p.Pixels();
              const Zyl8u* const src[3] = {&planes[0], &planes[n], &planes[2 * n]};
              runner.Call(e.name,
                          [&] { return e.fn(src, p.width, out.Plane(0), out.Step(0), p.Size()); });
            });
          }};
}

// ------------------------------------------------------ subsampled decoders --

namespace {

// The decoders, like the encoders, convert whole chroma blocks only (an odd packed row would
// even end in a pixel of its own rule). An odd size is therefore decoded at the size rounded
// up to whole blocks, from a copy of the file whose chroma planes already have that size and
// whose luma repeats its last column and row, and cropped into the hub.
void DecodeWholeBlocks(const RawImage& raw, Picture& pic,
                       const std::function<void(const RawImage&, Picture&)>& convert) {
  std::vector<PlaneLayout> layouts;
  int w, h;
  WholeBlocks(raw, pic, layouts, w, h);
  if (w == pic.width && h == pic.height) {
    convert(raw, pic);
    return;
  }
  RawImage whole(w, h, layouts);
  for (int i = 0; i < raw.PlaneCount(); ++i) {
    const size_t have = static_cast<size_t>(raw.Step(i)), want = static_cast<size_t>(whole.Step(i));
    const size_t sample = static_cast<size_t>(raw.Layout(i).channels);
    for (int y = 0; y < whole.PlaneHeight(i); ++y) {
      const uint8_t* from =
          raw.Plane(i) + static_cast<size_t>(std::min(y, raw.PlaneHeight(i) - 1)) * have;
      uint8_t* to = whole.Plane(i) + static_cast<size_t>(y) * want;
      std::memcpy(to, from, have);
      for (size_t k = have; k < want; ++k) to[k] = to[k - sample];
    }
  }
  Picture padded;
  padded.width = w;
  padded.height = h;
  padded.rgb.assign(padded.Pixels() * 3, 0);
  convert(whole, padded);
  for (int y = 0; y < pic.height; ++y) {
    std::memcpy(&pic.rgb[static_cast<size_t>(y) * pic.width * 3],
                &padded.rgb[static_cast<size_t>(y) * w * 3], static_cast<size_t>(pic.width) * 3);
  }
}

// Pixels an export wrote in `order` into the hub's R, G, B.
void OrderToHub(const std::vector<uint8_t>& px, Source order, Picture& pic) {
  const bool bgr = order == Source::kBgr || order == Source::kBgra;
  const size_t channels = static_cast<size_t>(SourceChannels(order));
  for (size_t i = 0; i < pic.Pixels(); ++i) {
    const uint8_t* in = &px[i * channels];
    pic.rgb[i * 3] = in[bgr ? 2 : 0];
    pic.rgb[i * 3 + 1] = in[1];
    pic.rgb[i * 3 + 2] = in[bgr ? 0 : 2];
  }
}

// Calls an export with or without the alpha argument (255, opaque).
template <class Fn, class... Args>
ZylStatus CallMaybeAlpha(Fn fn, Args... args) {
  if constexpr (std::is_invocable_v<Fn, Args..., Zyl8u>) {
    return fn(args..., Zyl8u{255});
  } else {
    return fn(args...);
  }
}

template <class Fn>
Decoder SubP3Decoder(Export<Fn> e, Source order, bool swap_chroma) {
  return {{e.name}, [e, order, swap_chroma](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(LumaFirst(raw, 3), "a subsampled three-plane decoder", e.name);
            DecodeWholeBlocks(raw, pic, [&](const RawImage& in, Picture& out) {
              const int c1 = swap_chroma ? 2 : 1, c2 = 3 - c1;
              const Zyl8u* const src[3] = {in.Plane(0), in.Plane(c1), in.Plane(c2)};
              const int steps[3] = {in.Step(0), in.Step(c1), in.Step(c2)};
              const int channels = SourceChannels(order);
              std::vector<uint8_t> px(out.Pixels() * channels);
              runner.Call(e.name, [&] {
                return CallMaybeAlpha(e.fn, src, steps, px.data(), out.width * channels,
                                      out.Size());
              });
              OrderToHub(px, order, out);
            });
          }};
}

template <class Fn>
Decoder SubP2Decoder(Export<Fn> e, Source order) {
  return {{e.name}, [e, order](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(LumaFirst(raw, 2), "a luma and chroma-pair decoder", e.name);
            DecodeWholeBlocks(raw, pic, [&](const RawImage& in, Picture& out) {
              const int channels = SourceChannels(order);
              std::vector<uint8_t> px(out.Pixels() * channels);
              runner.Call(e.name, [&] {
                return CallMaybeAlpha(e.fn, in.Plane(0), in.Step(0), in.Plane(1), in.Step(1),
                                      px.data(), out.width * channels, out.Size());
              });
              OrderToHub(px, order, out);
            });
          }};
}

template <class Fn>
Decoder SubC2Decoder(Export<Fn> e, Source order) {
  return {{e.name}, [e, order](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && raw.Layout(0).x_sub == 2, "a packed 4:2:2 decoder",
                    e.name);
            DecodeWholeBlocks(raw, pic, [&](const RawImage& in, Picture& out) {
              const int channels = SourceChannels(order);
              std::vector<uint8_t> px(out.Pixels() * channels);
              runner.Call(e.name, [&] {
                return CallMaybeAlpha(e.fn, in.Plane(0), in.Step(0), px.data(),
                                      out.width * channels, out.Size());
              });
              OrderToHub(px, order, out);
            });
          }};
}

}  // namespace

Decoder DecodeSubP3(Export<FromSubPlanesFn> e, Source order, bool swap_chroma) {
  return SubP3Decoder(e, order, swap_chroma);
}

Decoder DecodeSubP3(Export<FromSubPlanesAlphaFn> e, Source order, bool swap_chroma) {
  return SubP3Decoder(e, order, swap_chroma);
}

Decoder DecodeSubP2(Export<FromLumaChromaFn> e, Source order) { return SubP2Decoder(e, order); }

Decoder DecodeSubP2(Export<FromLumaChromaAlphaFn> e, Source order) {
  return SubP2Decoder(e, order);
}

Decoder DecodeSubP2AsP3(Export<FromSubPlanesFn> e, Source order) {
  return {{e.name}, [e, order](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(LumaFirst(raw, 2) && raw.Layout(1).channels == 2,
                    "a luma and chroma-pair decoder", e.name);
            DecodeWholeBlocks(raw, pic, [&](const RawImage& in, Picture& out) {
              const size_t n = static_cast<size_t>(in.PlaneWidth(1)) * in.PlaneHeight(1);
              std::vector<uint8_t> chroma(2 * n);
              for (size_t i = 0; i < n; ++i) {
                chroma[i] = in.Plane(1)[2 * i];
                chroma[n + i] = in.Plane(1)[2 * i + 1];
              }
              const Zyl8u* const src[3] = {in.Plane(0), &chroma[0], &chroma[n]};
              const int steps[3] = {in.Step(0), in.PlaneWidth(1), in.PlaneWidth(1)};
              const int channels = SourceChannels(order);
              std::vector<uint8_t> px(out.Pixels() * channels);
              runner.Call(e.name, [&] {
                return e.fn(src, steps, px.data(), out.width * channels, out.Size());
              });
              OrderToHub(px, order, out);
            });
          }};
}

Decoder DecodeSubC2(Export<InterleavedFn> e, Source order) { return SubC2Decoder(e, order); }

Decoder DecodeSubC2(Export<InterleavedAlphaFn> e, Source order) { return SubC2Decoder(e, order); }

Decoder DecodeSubC2P3(Export<InterleavedToPlanarFn> e) {
  return {{e.name}, [e](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(raw.PlaneCount() == 1 && raw.Layout(0).x_sub == 2, "a packed 4:2:2 decoder",
                    e.name);
            DecodeWholeBlocks(raw, pic, [&](const RawImage& in, Picture& out) {
              const size_t n = out.Pixels();
              std::vector<uint8_t> planes(n * 3);
              Zyl8u* const dst[3] = {&planes[0], &planes[n], &planes[2 * n]};
              runner.Call(e.name, [&] {
                return e.fn(in.Plane(0), in.Step(0), dst, out.width, out.Size());
              });
              MergePlanes(planes, out);
            });
          }};
}

// ------------------------------------------ full resolution, any pixel order --

Encoder EncodePixels(Export<InterleavedFn> e, Source source) {
  return {{e.name}, [e, source](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(InterleavedPlane(raw), "an interleaved encoder", e.name);
            const int in_channels = SourceChannels(source);
            const int channels = raw.Layout(0).channels;
            const std::vector<uint8_t> px = HubAs(pic, source);
            // A four-channel export leaves the fourth byte alone: keep the source alpha there.
            std::vector<uint8_t> out = px;
            runner.Call(e.name, [&] {
              return e.fn(px.data(), Step(pic.width, in_channels), out.data(),
                          Step(pic.width, in_channels), pic.Size());
            });
            if (channels == in_channels) {
              std::memcpy(raw.Plane(0), out.data(), out.size());
            } else {
              CopyThreeChannels(out.data(), in_channels, raw.Plane(0), channels, pic.Pixels());
            }
          }};
}

Decoder DecodePixels(Export<InterleavedFn> e, Source order) {
  return {{e.name}, [e, order](const RawImage& raw, Picture& pic, CallRunner& runner) {
            Require(InterleavedPlane(raw), "an interleaved decoder", e.name);
            const int channels = SourceChannels(order);
            std::vector<uint8_t> temp;
            const uint8_t* src = AsChannels(raw, pic, channels, 255, temp);
            // The fourth channel of a four-channel export's output is the file's, unchanged.
            std::vector<uint8_t> px(src, src + pic.Pixels() * channels);
            runner.Call(e.name, [&] {
              return e.fn(src, Step(pic.width, channels), px.data(), Step(pic.width, channels),
                          pic.Size());
            });
            OrderToHub(px, order, pic);
          }};
}

Encoder EncodeC3P3(Export<InterleavedToPlanarFn> e, Source source) {
  return {{e.name}, [e, source](const Picture& pic, RawImage& raw, CallRunner& runner) {
            Require(FullResolutionPlanes(raw, 3), "a planar encoder", e.name);
            const std::vector<uint8_t> px = HubAs(pic, source);
            Zyl8u* const dst[3] = {raw.Plane(0), raw.Plane(1), raw.Plane(2)};
            runner.Call(e.name, [&] {
              return e.fn(px.data(), Step(pic.width, SourceChannels(source)), dst, raw.Step(0),
                          pic.Size());
            });
          }};
}

}  // namespace zylconv
