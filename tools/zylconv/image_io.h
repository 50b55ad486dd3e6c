// Files: raw bytes, PPM and PNG, all read into or written from the hub picture.
#ifndef ZYLCONV_IMAGE_IO_H_
#define ZYLCONV_IMAGE_IO_H_

#include <cstdint>
#include <string>
#include <vector>

#include "formats.h"

namespace zylconv {

std::vector<uint8_t> ReadFileBytes(const std::string& path);
void WriteFileBytes(const std::string& path, const std::vector<uint8_t>& bytes);

// Binary PPM (P6) with maxval 255.
Picture ReadPpm(const std::string& path);
void WritePpm(const std::string& path, const Picture& pic);

// Any PNG is accepted and reduced to 8-bit RGB, keeping alpha when it has
// some; a picture is written as RGBA only when its alpha is not all opaque.
Picture ReadPng(const std::string& path);
void WritePng(const std::string& path, const Picture& pic);

}  // namespace zylconv

#endif  // ZYLCONV_IMAGE_IO_H_
