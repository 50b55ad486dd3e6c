/*
 * zylcore: the companion core library of zylcc.
 */
#ifndef ZYLCORE_H_
#define ZYLCORE_H_

#include <stdint.h>

#if defined(_WIN32) || defined(__CYGWIN__)
#if defined(ZYLCORE_BUILDING)
#define ZYLCORE_API __declspec(dllexport)
#elif defined(ZYLCC_STATIC)
#define ZYLCORE_API
#else
#define ZYLCORE_API __declspec(dllimport)
#endif
#else
#define ZYLCORE_API __attribute__((visibility("default")))
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* Stores the size in bytes of the processor's largest cache into *pSizeByte
 * and returns 0. A stored value of 0 means the size could not be found.
 * A null pointer gives -8 (zylStsNullPtrErr) and stores nothing. */
ZYLCORE_API int32_t zylGetMaxCacheSizeB(int32_t* pSizeByte);

#ifdef __cplusplus
}
#endif

#endif /* ZYLCORE_H_ */
