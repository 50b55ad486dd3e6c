// Names shared by the per-target kernels and the entries of the encoders.
#ifndef ZYL_SUBSAMPLED_ENCODE_H_
#define ZYL_SUBSAMPLED_ENCODE_H_

namespace zyl {

// The colour matrices of the encoders, by number so that one name reaches
// the matrix of every target's namespace.
enum EncodeMatrix {
  kMatBt601,        // BT.601 studio range
  kMatBt601Packed,  // BT.601 studio, packed pair loop (second luma truncates)
  kMatBt709Csc,     // BT.709 studio range
  kMatBt709Hdtv,    // BT.709 full range, outputs in 1..254
  kMatYuv           // analogue YUV
};

// Where the argument checks of a member depart from pointers, size, planes.
enum CheckOrder {
  kPointersFirst,  // pointers, size, then each plane pointer
  kSizeFirst,      // size, pointers, planes
  kPlanesAlong     // pointers and plane pointers in one test, then size
};

}  // namespace zyl

#endif  // ZYL_SUBSAMPLED_ENCODE_H_
