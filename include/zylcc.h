/*
 * zylcc: bit-exact color conversion over caller-owned pixel buffers.
 *
 * Every image function takes a pointer to the first pixel of the region of
 * interest, a row step in BYTES (any sign unless the family says otherwise),
 * and the region size in pixels. It validates its arguments in a fixed order
 * (pointers, size, steps, plane pointers, family parameters), returns the
 * first failing status with nothing written, and otherwise converts and
 * returns zylStsOk (or a positive warning). Nothing is allocated, nothing is
 * kept between calls, and every function may run concurrently on distinct
 * destinations.
 */
#ifndef ZYLCC_H_
#define ZYLCC_H_

#include <stdint.h>

#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(ZYLCC_BUILDING)
#define ZYL_API __declspec(dllexport)
#elif defined(ZYLCC_STATIC)
#define ZYL_API
#else
#define ZYL_API __declspec(dllimport)
#endif
#else
#define ZYL_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* ---------------------------------------------------------------- types -- */

typedef uint8_t Zyl8u;
typedef uint16_t Zyl16u;
typedef int16_t Zyl16s;
typedef int32_t Zyl32s;
typedef uint32_t Zyl32u;
typedef float Zyl32f;
typedef double Zyl64f;

/* 0 success, negative error (nothing written), positive warning. */
typedef int32_t ZylStatus;

enum {
  zylStsOk = 0,
  zylStsNegativeSrc = 1, /* tone mapping: source measure below 0.0 */
  zylStsDoubleSize = 35, /* odd size for a 2:1 subsampled layout */
  zylStsBadArgErr = -5,  /* enumerated argument outside its set */
  zylStsSizeErr = -6,    /* width or height below 1 (or family minimum) */
  zylStsNullPtrErr = -8, /* a required pointer is null */
  zylStsStepErr = -16,   /* a row step below 1 (step-checking families) */
  zylStsNumChannelsErr = -47,
  zylStsGammaRangeErr = -49,
  zylStsDitherLevelsErr = -54,
  zylStsNoiseRangeErr = -55,
  zylStsDitherTypeErr = -224
};

/* Region-of-interest size in pixels, passed by value. */
typedef struct ZylSize {
  int32_t width;
  int32_t height;
} ZylSize;

/* The size record of the _L twins: pointer-sized signed width and height. */
typedef struct ZylSizeL {
  intptr_t width;
  intptr_t height;
} ZylSizeL;

/* A region inside a larger source image: top-left column and row, then size. */
typedef struct ZylRect {
  int32_t x;
  int32_t y;
  int32_t width;
  int32_t height;
} ZylRect;

/* Colour of the 2x2 Bayer tile at source row 0, column 0 (row 0, then row 1). */
typedef enum ZylBayerGrid {
  zylBayerBGGR = 0,
  zylBayerRGGB = 1,
  zylBayerGBRG = 2,
  zylBayerGRBG = 3
} ZylBayerGrid;

typedef enum ZylDitherType {
  zylDitherNone = 0,
  zylDitherFS = 1,
  zylDitherJJN = 2,
  zylDitherStucki = 3,
  zylDitherBayer = 4
} ZylDitherType;

/* The static record returned by zylccGetLibVersion; never freed or modified. */
typedef struct ZylLibraryVersion {
  int32_t major;
  int32_t minor;
  int32_t update;
  uint32_t revision;
  char cpuCode[4];
  const char* name;
  const char* version;
  const char* buildDate;
} ZylLibraryVersion;

ZYL_API const ZylLibraryVersion* zylccGetLibVersion(void);

/* ------------------------------------------ RGB <-> YUV, full resolution --
 * 16.16 fixed point. Y = (0.299R + 0.587G + 0.114B) rounded; U = 0.492(B-Y)
 * + 128 (never clamped: it cannot leave 16..239); V = 0.877(R-Y) + 128
 * clamped. The inverse rounds R and B but not G, by definition.
 * AC4: the fourth channel of the destination is left untouched.
 * Planar sides take one step for all planes.
 */
ZYL_API ZylStatus zyliRGBToYUV_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                        int dstStep, ZylSize roiSize);
/* Plane 3 receives the source alpha; its pointer is used without a null test. */
ZYL_API ZylStatus zyliRGBToYUV_8u_AC4P4R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[4],
                                         int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV_8u_P3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* const pDst[3],
                                      int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUVToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliYUVToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
/* Writes aval into the fourth channel of every destination pixel. */
ZYL_API ZylStatus zyliYUVToRGB_8u_C3C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYUVToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                        int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUVToRGB_8u_P3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* const pDst[3],
                                      int dstStep, ZylSize roiSize);

/* ----------------------------------------- RGB <-> YCbCr, full resolution --
 * BT.601 studio range, 16.16 fixed point. The forward direction rounds and
 * needs no clamp (Y 16..235, Cb and Cr 16..240); the inverse truncates every
 * channel (no rounding term) and clamps, so (235, 128, 128) gives 254.
 * AC4R leaves the destination alpha untouched, AC4P3R drops the source
 * alpha, P3C4R writes aval. The 709CSC inverses use BT.709 studio weights.
 */
ZYL_API ZylStatus zyliRGBToYCbCr_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                        Zyl8u* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCrToRGB_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                        Zyl8u* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCrToBGR_709CSC_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCrToBGR_709CSC_8u_P3C4R(const Zyl8u* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize,
                                                 Zyl8u aval);

/* ---------------------------------------------------------------- gray --
 * RGBToGray: fixed weights 0.299, 0.587, 0.114 (8u: 9798, 19235, 3736 in
 * 1.15 fixed point, summing to 32769 on purpose). ColorToGray: caller
 * weights, or those defaults when pCoeffs is null. 8u rows round differently
 * in whole vector blocks and in the per-pixel tail, by definition. 16u/16s
 * go through single precision with rounding to nearest and saturation.
 * For 16u, 16s and 32f the byte steps must be multiples of the element size.
 * GrayToRGB replicates gray into three channels (C1C4R: fourth = aval).
 * YCbCr422ToGray takes the luma bytes out of Y0 Cb Y1 Cr groups.
 */
ZYL_API ZylStatus zyliRGBToGray_8u_C3C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_8u_AC4C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                          ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_16u_C3C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_16u_AC4C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                           int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_16s_C3C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_16s_AC4C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                           int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_32f_C3C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToGray_32f_AC4C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                           int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliColorToGray_8u_C3C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                           ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_8u_AC4C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_16u_C3C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_16u_AC4C1R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                             int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_16s_C3C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_16s_AC4C1R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst,
                                             int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_32f_C3C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_32f_AC4C1R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                             int dstStep, ZylSize roiSize, const Zyl32f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_64f_C3C1R(const Zyl64f* pSrc, int srcStep, Zyl64f* pDst,
                                            int dstStep, ZylSize roiSize, const Zyl64f pCoeffs[3]);
ZYL_API ZylStatus zyliColorToGray_64f_AC4C1R(const Zyl64f* pSrc, int srcStep, Zyl64f* pDst,
                                             int dstStep, ZylSize roiSize, const Zyl64f pCoeffs[3]);
ZYL_API ZylStatus zyliGrayToRGB_8u_C1C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliGrayToRGB_8u_C1C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliGrayToRGB_16u_C1C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliGrayToRGB_16u_C1C4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst,
                                          int dstStep, ZylSize roiSize, Zyl16u aval);
ZYL_API ZylStatus zyliGrayToRGB_32f_C1C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliGrayToRGB_32f_C1C4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst,
                                          int dstStep, ZylSize roiSize, Zyl32f aval);
ZYL_API ZylStatus zyliYCbCr422ToGray_8u_C2C1R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize);

/* ------------------------------------------------------------ PhotoYCC --
 * RGB <-> Y, C1, C2 (luma scaled by 1/1.402, chroma centred on 156 and 137
 * on the 8-bit scale). 8u in fixed point, 32f in single precision (forward
 * unclamped, inverse clamped to 0..1); 16u maps 1.0 to 65535 and 16s is 16u
 * shifted by -32768. AC4R leaves the destination alpha untouched.
 */
ZYL_API ZylStatus zyliRGBToYCC_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCC_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliYCCToRGB_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);

/* --------------------------------------------------------------- YCoCg --
 * B, G, R pixels (SBGR: signed 16-bit) <-> planes Y, Co, Cg sharing one
 * step. Plain: Y = (R + 2G + B + 2) >> 2, Co = (R - B + 1) >> 1, Cg = (2G -
 * R - B + 2) >> 2; _Rev: the lossless lifting scheme. Shifts floor. Any
 * null pointer, the plane array or a plane, gives -8 before the size test.
 * The four-channel inverses leave the fourth channel untouched.
 */
ZYL_API ZylStatus zyliBGRToYCoCg_8u16s_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl16s* const pDst[3],
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCoCg_8u16s_C4P3R(const Zyl8u* pSrc, int srcStep, Zyl16s* const pDst[3],
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCoCg_Rev_8u16s_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                 Zyl16s* const pDst[3], int dstStep,
                                                 ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCoCg_Rev_8u16s_C4P3R(const Zyl8u* pSrc, int srcStep,
                                                 Zyl16s* const pDst[3], int dstStep,
                                                 ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToBGR_16s8u_P3C3R(const Zyl16s* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToBGR_16s8u_P3C4R(const Zyl16s* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToBGR_Rev_16s8u_P3C3R(const Zyl16s* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToBGR_Rev_16s8u_P3C4R(const Zyl16s* const pSrc[3], int srcStep,
                                                 Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_16s_C3P3R(const Zyl16s* pSrc, int srcStep, Zyl16s* const pDst[3],
                                            int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_16s_C4P3R(const Zyl16s* pSrc, int srcStep, Zyl16s* const pDst[3],
                                            int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_16s32s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                               Zyl32s* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_16s32s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                               Zyl32s* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                                Zyl16s* const pDst[3], int dstStep,
                                                ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                                Zyl16s* const pDst[3], int dstStep,
                                                ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s32s_C3P3R(const Zyl16s* pSrc, int srcStep,
                                                   Zyl32s* const pDst[3], int dstStep,
                                                   ZylSize roiSize);
ZYL_API ZylStatus zyliSBGRToYCoCg_Rev_16s32s_C4P3R(const Zyl16s* pSrc, int srcStep,
                                                   Zyl32s* const pDst[3], int dstStep,
                                                   ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_16s_P3C3R(const Zyl16s* const pSrc[3], int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_16s_P3C4R(const Zyl16s* const pSrc[3], int srcStep, Zyl16s* pDst,
                                            int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_32s16s_P3C3R(const Zyl32s* const pSrc[3], int srcStep,
                                               Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_32s16s_P3C4R(const Zyl32s* const pSrc[3], int srcStep,
                                               Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_16s_P3C3R(const Zyl16s* const pSrc[3], int srcStep,
                                                Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_16s_P3C4R(const Zyl16s* const pSrc[3], int srcStep,
                                                Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_32s16s_P3C3R(const Zyl32s* const pSrc[3], int srcStep,
                                                   Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToSBGR_Rev_32s16s_P3C4R(const Zyl32s* const pSrc[3], int srcStep,
                                                   Zyl16s* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCoCg_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                          int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCoCgToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                          int dstStep, ZylSize roiSize);

/* ------------------------------------ RGB to 4:2:0, 4:2:2 and 4:1:1 -----
 * BT.601 studio range unless the name says 709CSC (BT.709 studio) or
 * 709HDTV (BT.709 full range, outputs 1..254); YUV members use the analogue
 * weights. Luma rounds; 4:2:0 chroma is the matrix applied to the 2x2 sums
 * (rounding term 2^15 at >> 18), 4:2:2 chroma to the pair sums. Planar
 * destinations take Y, plane 1, plane 2 with one step each (YCrCb: plane 1
 * is Cr); P2 destinations a luma plane and a Cb Cr pair plane; C2 packed
 * 4:2:2 in the byte order the name spells. P3 RGB sources share one step.
 * Planar and two-plane members convert the even part of an odd size and
 * return zylStsDoubleSize (+35); packed members return 0. Names without the
 * final R take the whole image, steps implied by the width.
 */
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                              const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCrCb420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCrCb420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                              const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCrCb420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                              const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                    Zyl8u* const pDst[3], const int dstStep[3],
                                                    ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                     Zyl8u* const pDst[3], const int dstStep[3],
                                                     ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCrCb420_709CSC_8u_C3P3R(const Zyl8u* pSrc, int srcStep,
                                                    Zyl8u* const pDst[3], const int dstStep[3],
                                                    ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCrCb420_709CSC_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                     Zyl8u* const pDst[3], const int dstStep[3],
                                                     ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_709HDTV_8u_AC4P3R(const Zyl8u* pSrc, int srcStep,
                                                      Zyl8u* const pDst[3], const int dstStep[3],
                                                      ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYUV420_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                            const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV420_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV420_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                         Zyl8u* const pDst[3], const int dstStep[3],
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV420_8u_C3P3(const Zyl8u* pSrc, Zyl8u* const pDst[3], ZylSize imgSize);
ZYL_API ZylStatus zyliRGBToYUV420_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_8u_AC4P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                              int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                              ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr420_8u_C4P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                             int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                             ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_C3P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                                    int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                                    ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr420_709CSC_8u_AC4P2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDstY,
                                                     int dstYStep, Zyl8u* pDstCbCr, int dstCbCrStep,
                                                     ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                              const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                           const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV422_8u_P3R(const Zyl8u* const pSrc[3], int srcStep,
                                         Zyl8u* const pDst[3], const int dstStep[3],
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3P3(const Zyl8u* pSrc, Zyl8u* const pDst[3], ZylSize imgSize);
ZYL_API ZylStatus zyliRGBToYUV422_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize);
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr422_8u_AC4C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCbCr422_8u_P3C2R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCrCb422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYCrCb422_8u_P3C2R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToYUV422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                           ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToCbYCr422_709HDTV_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToCbYCr422_709HDTV_8u_AC4C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                      int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToCbYCr422_8u_C3C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToCbYCr422_8u_AC4C2R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                              int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr411_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             const int dstStep[3], ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToYCbCr411_8u_AC4P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                              const int dstStep[3], ZylSize roiSize);

/* ----------------------------------- 4:2:0, 4:2:2 and 4:1:1 to RGB ------
 * Chroma is replicated over the pixels it serves. Planar and two-plane
 * BT.601 sources use yy = 76284 Y with the rounding half folded into the
 * offsets; packed 4:2:2 sources use their own set (76282, ...), every
 * constant 2 lower, by definition. 709CSC: BT.709 studio; 709HDTV: BT.709
 * full range; YUV: the analogue inverse. Subsampled planar sources take
 * per-plane steps; planar RGB destinations one step. C4 members write aval,
 * AC4 members leave the fourth byte alone. 4:2:0 members return +35 on an
 * odd size (height 1 writes nothing); packed members convert every pixel
 * (a lone last pixel takes its missing chroma from the pair before it and
 * has R and B swapped) and return 0. The v210 members read groups of four
 * 32-bit words (step in words) and write 16-bit elements (step in
 * elements); steps below 1 give zylStsSizeErr.
 */
ZYL_API ZylStatus zyliCbYCr422ToBGR_709HDTV_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliCbYCr422ToBGR_709HDTV_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                                     int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliCbYCr422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliCbYCr422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr411ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr411ToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr420ToBGR_709CSC_8u_P3C3R(const Zyl8u* const pSrc[3],
                                                    const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                    ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr420ToBGR_709HDTV_8u_P3C4R(const Zyl8u* const pSrc[3],
                                                     const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                     ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr420ToBGR_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr420ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr422ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_C2P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCbCr422ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCrCb420ToBGR_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCrCb420ToBGR_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb420ToBGR_Filter_8u_P3C4R(const Zyl8u* const pSrc[3],
                                                    const int srcStep[3], Zyl8u* pDst, int dstStep,
                                                    ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P2C3R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P2C4R(const Zyl8u* pSrcY, int srcYStep,
                                             const Zyl8u* pSrcCbCr, int srcCbCrStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb420ToRGB_8u_P3C4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                             Zyl8u* pDst, int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb422ToBGR_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCrCb422ToBGR_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2C4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst,
                                             int dstStep, ZylSize roiSize, Zyl8u aval);
ZYL_API ZylStatus zyliYCrCb422ToRGB_8u_C2P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                             int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV420ToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize);
ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3AC4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                            Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3C3(const Zyl8u* const pSrc[3], Zyl8u* pDst, ZylSize imgSize);
ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV420ToRGB_8u_P3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                         Zyl8u* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_C2C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                           ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3(const Zyl8u* const pSrc[3], Zyl8u* const pDst[3],
                                        ZylSize imgSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3AC4R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                            Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3C3(const Zyl8u* const pSrc[3], Zyl8u* pDst, ZylSize imgSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3C3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                           Zyl8u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422ToRGB_8u_P3R(const Zyl8u* const pSrc[3], const int srcStep[3],
                                         Zyl8u* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422v210ToBGR_709HDTV_32u16u_C3(const Zyl32u* pSrc, int srcStep,
                                                        Zyl16u* pDst, int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422v210ToGray_709HDTV_32u16u_C3C1(const Zyl32u* pSrc, int srcStep,
                                                           Zyl16u* pDst, int dstStep,
                                                           ZylSize roiSize);
ZYL_API ZylStatus zyliYUV422v210ToRGB_709HDTV_32u16u_C3(const Zyl32u* pSrc, int srcStep,
                                                        Zyl16u* pDst, int dstStep, ZylSize roiSize);

/* ---------------------------------------------------------- HLS and HSV --
 * Single-precision arithmetic for every type. H, L, S (or H, S, V) take the places
 * of R, G, B. 8u/16u hue codes are degrees times 255/360 (65535/360); HSV 8u hue is
 * in sixths of a turn times 42.5; 32f hue is a fraction of a turn. The 8u HLS rows
 * round in blocks of 8 pixels (4 for AC4) and differ by design in the last
 * width%8 (width%4) pixels. 16u/32f steps are in bytes like every other step.
 * The planar and four-plane BGR members check their steps (-16 below 1) after
 * the pointers and before the size; plane order is B, G, R (or H, L, S), then alpha.
 */
ZYL_API ZylStatus zyliRGBToHLS_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHLS_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToRGB_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                        int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                        int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_P3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* const pDst[3],
                                      int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_AP4R(const Zyl8u* const pSrc[4], int srcStep,
                                       Zyl8u* const pDst[4], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_AP4C4R(const Zyl8u* const pSrc[4], int srcStep, Zyl8u* pDst,
                                         int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToHLS_8u_AC4P4R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[4],
                                         int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_C3P3R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[3],
                                        int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_P3C3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* pDst,
                                        int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_P3R(const Zyl8u* const pSrc[3], int srcStep, Zyl8u* const pDst[3],
                                      int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_AP4R(const Zyl8u* const pSrc[4], int srcStep,
                                       Zyl8u* const pDst[4], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_AP4C4R(const Zyl8u* const pSrc[4], int srcStep, Zyl8u* pDst,
                                         int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliHLSToBGR_8u_AC4P4R(const Zyl8u* pSrc, int srcStep, Zyl8u* const pDst[4],
                                         int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHSV_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHSV_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHSV_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToHSV_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliHSVToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliHSVToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHSVToRGB_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliHSVToRGB_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);

/* ------------------------------------------------------ CIE Lab and LUV --
 * D65 white, single precision (the 64f planar members in double). 8u Lab: L*2.55,
 * a+128, b+128; 8u LUV: L*2.55, (u+134)*255/354, (v+140)*255/262. The forward
 * cube root comes from a 128-entry table with a series correction; the inverse
 * uses pure cubes. The _L twins take pointer-sized steps and sizes and give the
 * same results as their plain forms.
 */
ZYL_API ZylStatus zyliRGBToLab_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToLab_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToLab_8u16u_C3R(const Zyl8u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLab_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToLab_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLab_32f_P3R(const Zyl32f* const pSrc[3], int srcStep,
                                       Zyl32f* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLab_32f_P3R_L(const Zyl32f* const pSrc[3], intptr_t srcStep,
                                         Zyl32f* const pDst[3], intptr_t dstStep, ZylSizeL roiSize);
ZYL_API ZylStatus zyliRGBToLab_64f_P3R(const Zyl64f* const pSrc[3], int srcStep,
                                       Zyl64f* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLab_64f_P3R_L(const Zyl64f* const pSrc[3], intptr_t srcStep,
                                         Zyl64f* const pDst[3], intptr_t dstStep, ZylSizeL roiSize);
ZYL_API ZylStatus zyliLabToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliLabToBGR_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliLabToBGR_16u8u_C3R(const Zyl16u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                         ZylSize roiSize);
ZYL_API ZylStatus zyliLabToRGB_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLabToBGR_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLabToRGB_32f_P3R(const Zyl32f* const pSrc[3], int srcStep,
                                       Zyl32f* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliLabToRGB_32f_P3R_L(const Zyl32f* const pSrc[3], intptr_t srcStep,
                                         Zyl32f* const pDst[3], intptr_t dstStep, ZylSizeL roiSize);
ZYL_API ZylStatus zyliLabToRGB_64f_P3R(const Zyl64f* const pSrc[3], int srcStep,
                                       Zyl64f* const pDst[3], int dstStep, ZylSize roiSize);
ZYL_API ZylStatus zyliLabToRGB_64f_P3R_L(const Zyl64f* const pSrc[3], intptr_t srcStep,
                                         Zyl64f* const pDst[3], intptr_t dstStep, ZylSizeL roiSize);
ZYL_API ZylStatus zyliRGBToLUV_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToLUV_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToRGB_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToLUV_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliBGRToLUV_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToBGR_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliLUVToBGR_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);

/* ------------------------------------------------------------- CIE XYZ --
 * D65 matrices, not normalised by the white. 8u: 16.16 coefficients truncated
 * toward zero, no rounding term, Z (forward) and R, G, B (inverse) clamped.
 * 32f: Z clamped to 0..1 forward, R, G, B clamped to 0..1 inverse. 16u/16s:
 * float matrices, rounded to nearest and saturated.
 */
ZYL_API ZylStatus zyliRGBToXYZ_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliRGBToXYZ_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_8u_C3R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                      ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_8u_AC4R(const Zyl8u* pSrc, int srcStep, Zyl8u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_16u_C3R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_16u_AC4R(const Zyl16u* pSrc, int srcStep, Zyl16u* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_16s_C3R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_16s_AC4R(const Zyl16s* pSrc, int srcStep, Zyl16s* pDst, int dstStep,
                                        ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_32f_C3R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                       ZylSize roiSize);
ZYL_API ZylStatus zyliXYZToRGB_32f_AC4R(const Zyl32f* pSrc, int srcStep, Zyl32f* pDst, int dstStep,
                                        ZylSize roiSize);

#ifdef __cplusplus
}
#endif

#endif /* ZYLCC_H_ */
