// Call shapes: how an export of a given argument list is driven from the hub
// picture and a raw file. Exports of one shape differ only in their color
// model, so a new family reuses these and adds only rows to the format table.
#ifndef ZYLCONV_SHAPES_H_
#define ZYLCONV_SHAPES_H_

#include "formats.h"
#include "zylcc.h"

namespace zylconv {

// An export and its name, so the name is written once and cannot drift.
template <class Fn>
struct Export {
  Fn fn;
  const char* name;
};
#define ZYLCONV_EXPORT(f) \
  ::zylconv::Export<decltype(&f)> { &f, #f }

// Argument lists of the exports, as they appear in zylcc.h.
using InterleavedFn = ZylStatus (*)(const Zyl8u*, int, Zyl8u*, int, ZylSize);
using InterleavedAlphaFn = ZylStatus (*)(const Zyl8u*, int, Zyl8u*, int, ZylSize, Zyl8u);
using InterleavedToPlanarFn = ZylStatus (*)(const Zyl8u*, int, Zyl8u* const*, int, ZylSize);
using PlanarToInterleavedFn = ZylStatus (*)(const Zyl8u* const*, int, Zyl8u*, int, ZylSize);
using PlanarToInterleavedAlphaFn = ZylStatus (*)(const Zyl8u* const*, int, Zyl8u*, int, ZylSize,
                                                 Zyl8u);
using PlanarFn = ZylStatus (*)(const Zyl8u* const*, int, Zyl8u* const*, int, ZylSize);

// Encoders, named by the export's layout suffix. "Hub" is RGB interleaved;
// the file side is the format's own layout.
Encoder EncodeC3(Export<InterleavedFn> e);             // RGB -> 3 or 4 channels
Encoder EncodeAC4(Export<InterleavedFn> e);            // RGBA -> 4 channels, alpha untouched
Encoder EncodeC3P3(Export<InterleavedToPlanarFn> e);   // RGB -> planes 0..2
Encoder EncodeAC4P4(Export<InterleavedToPlanarFn> e);  // RGBA -> planes 0..3
Encoder EncodeAC4P3(Export<InterleavedToPlanarFn> e);  // RGBA -> planes 0..2, alpha dropped
Encoder EncodeP3(Export<PlanarFn> e);                  // R, G, B planes -> planes 0..2
Encoder EncodeC3C1(Export<InterleavedFn> e);           // RGB -> one 1-channel plane (gray)

Decoder DecodeC3(Export<InterleavedFn> e);            // 3 channels -> RGB
Decoder DecodeAC4(Export<InterleavedFn> e);           // 4 channels -> RGBA, alpha untouched
Decoder DecodeC3C4(Export<InterleavedAlphaFn> e);     // 3 channels -> RGBA, alpha 255
Decoder DecodeP3C3(Export<PlanarToInterleavedFn> e);  // planes 0..2 -> RGB
Decoder DecodeP3(Export<PlanarFn> e);                 // planes 0..2 -> R, G, B planes
Decoder DecodeC1C3(Export<InterleavedFn> e);          // one 1-channel plane -> RGB

// Planar decoders to four channels or to B, G, R order; the hub receives R, G, B (and A).
Decoder DecodeP3C4(Export<PlanarToInterleavedAlphaFn> e);     // planes 0..2 -> RGBA, alpha 255
Decoder DecodeP3C3Bgr(Export<PlanarToInterleavedFn> e);       // planes 0..2 -> BGR
Decoder DecodeP3C4Bgr(Export<PlanarToInterleavedAlphaFn> e);  // planes 0..2 -> BGRA, alpha 255

// Plain repacks between the hub and an RGB or RGBA file (no export).
Encoder EncodeCopy();
Decoder DecodeCopy();

// Subsampled encoders (4:2:0, 4:2:2, 4:1:1): the hub is handed to the export in the order and
// layout it reads (`source`); an odd size is padded by repeating the last column and row, so
// every sample of the file's rounded-up planes is written.
enum class Source { kRgb, kBgr, kRgba, kBgra };
using ToSubPlanesFn = ZylStatus (*)(const Zyl8u*, int, Zyl8u* const*, const int*, ZylSize);
using ToLumaChromaFn = ZylStatus (*)(const Zyl8u*, int, Zyl8u*, int, Zyl8u*, int, ZylSize);
Encoder EncodeSubP3(Export<ToSubPlanesFn> e, Source source);   // -> Y, chroma 1, chroma 2
Encoder EncodeSubP2(Export<ToLumaChromaFn> e, Source source);  // -> Y, chroma pairs
Encoder EncodeSubC2(Export<InterleavedFn> e, Source source);   // -> packed 4:2:2
Encoder EncodeSubP3C2(Export<PlanarToInterleavedFn> e);        // R, G, B planes -> packed 4:2:2

// Subsampled decoders: the export writes the pixels in the order and layout `order` names (a
// fourth byte, written 255, is dropped: these files carry no alpha); an odd size is decoded at
// the size rounded up to whole blocks, from the file's rounded-up chroma with the last luma
// column and row repeated, and cropped, so every pixel is decoded the same way. `swap_chroma`
// hands the export the file's two chroma planes in the other order (Y, Cr, Cb files through a
// Y, Cb, Cr export and back).
using FromSubPlanesFn = ZylStatus (*)(const Zyl8u* const*, const int*, Zyl8u*, int, ZylSize);
using FromSubPlanesAlphaFn = ZylStatus (*)(const Zyl8u* const*, const int*, Zyl8u*, int, ZylSize,
                                           Zyl8u);
using FromLumaChromaFn = ZylStatus (*)(const Zyl8u*, int, const Zyl8u*, int, Zyl8u*, int, ZylSize);
using FromLumaChromaAlphaFn = ZylStatus (*)(const Zyl8u*, int, const Zyl8u*, int, Zyl8u*, int,
                                            ZylSize, Zyl8u);
Decoder DecodeSubP3(Export<FromSubPlanesFn> e, Source order, bool swap_chroma = false);
Decoder DecodeSubP3(Export<FromSubPlanesAlphaFn> e, Source order, bool swap_chroma = false);
Decoder DecodeSubP2(Export<FromLumaChromaFn> e, Source order);       // Y, chroma pairs ->
Decoder DecodeSubP2(Export<FromLumaChromaAlphaFn> e, Source order);  // Y, chroma pairs ->
Decoder DecodeSubP2AsP3(Export<FromSubPlanesFn> e, Source order);    // pairs split into planes
Decoder DecodeSubC2(Export<InterleavedFn> e, Source order);          // packed 4:2:2 ->
Decoder DecodeSubC2(Export<InterleavedAlphaFn> e, Source order);     // packed 4:2:2 ->
Decoder DecodeSubC2P3(Export<InterleavedToPlanarFn> e);  // packed 4:2:2 -> R, G, B planes

// Full-resolution exports that read or write pixels in another order or with four channels
// (B, G, R; R, G, B, A; B, G, R, A): the hub is handed over or read back in that order.
Encoder EncodePixels(Export<InterleavedFn> e, Source source);
Decoder DecodePixels(Export<InterleavedFn> e, Source order);
Encoder EncodeC3P3(Export<InterleavedToPlanarFn> e, Source source);

}  // namespace zylconv

#endif  // ZYLCONV_SHAPES_H_
