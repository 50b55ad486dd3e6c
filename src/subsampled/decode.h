// Names shared by the per-target kernels and the entries of the decoders.
#ifndef ZYL_SUBSAMPLED_DECODE_H_
#define ZYL_SUBSAMPLED_DECODE_H_

namespace zyl {

// The decoding matrices, by number so that one name reaches the matrix of
// every target's namespace.
enum DecodeMatrixId {
  kDec601,        // BT.601 studio, planar and two-plane sources
  kDec601Packed,  // BT.601 studio, packed 4:2:2 sources (own constant set)
  kDec709Csc,     // BT.709 studio
  kDec709Hdtv,    // BT.709 full range
  kDecYuv         // analogue YUV
};

// Where a row's chroma comes from, one sample per pixel pair: two planes
// (cb, cr), or one plane of byte pairs at cb, Cb first (Cr first if swap).
struct ChromaRow {
  const unsigned char* cb;
  const unsigned char* cr;
  bool paired;
  bool swap;
};

}  // namespace zyl

#endif  // ZYL_SUBSAMPLED_DECODE_H_
