#include "image_io.h"

#include <png.h>

#include <cerrno>
#include <csetjmp>
#include <cstdio>
#include <cstring>
#include <memory>
#include <string>
#include <vector>

namespace zylconv {
namespace {

struct FileCloser {
  void operator()(std::FILE* f) const {
    if (f != nullptr) std::fclose(f);
  }
};
using FilePtr = std::unique_ptr<std::FILE, FileCloser>;

FilePtr OpenFile(const std::string& path, const char* mode) {
  FilePtr f(std::fopen(path.c_str(), mode));
  if (!f) throw Error("cannot open '" + path + "': " + std::strerror(errno));
  return f;
}

void CloseWritten(FilePtr f, const std::string& path) {
  const bool failed = std::ferror(f.get()) != 0;
  if (std::fclose(f.release()) != 0 || failed) {
    throw Error("cannot write '" + path + "': " + std::strerror(errno));
  }
}

}  // namespace

std::vector<uint8_t> ReadFileBytes(const std::string& path) {
  FilePtr f = OpenFile(path, "rb");
  std::vector<uint8_t> bytes;
  uint8_t chunk[1 << 16];
  size_t got;
  while ((got = std::fread(chunk, 1, sizeof chunk, f.get())) > 0) {
    bytes.insert(bytes.end(), chunk, chunk + got);
  }
  if (std::ferror(f.get())) throw Error("cannot read '" + path + "': " + std::strerror(errno));
  return bytes;
}

void WriteFileBytes(const std::string& path, const std::vector<uint8_t>& bytes) {
  FilePtr f = OpenFile(path, "wb");
  if (!bytes.empty()) std::fwrite(bytes.data(), 1, bytes.size(), f.get());
  CloseWritten(std::move(f), path);
}

// ------------------------------------------------------------------ PPM --

namespace {

// Reads the next header number of a PPM, skipping whitespace and comments.
int64_t PpmNumber(const std::vector<uint8_t>& b, size_t& pos, const std::string& path) {
  for (;;) {
    while (pos < b.size() && std::strchr(" \t\r\n\v\f", b[pos]) != nullptr && b[pos] != 0) ++pos;
    if (pos < b.size() && b[pos] == '#') {
      while (pos < b.size() && b[pos] != '\n') ++pos;
      continue;
    }
    break;
  }
  if (pos >= b.size() || b[pos] < '0' || b[pos] > '9') {
    throw Error(path + ": malformed PPM header");
  }
  int64_t value = 0;
  while (pos < b.size() && b[pos] >= '0' && b[pos] <= '9') {
    value = value * 10 + (b[pos++] - '0');
    if (value > (int64_t{1} << 31)) throw Error(path + ": malformed PPM header (number too large)");
  }
  return value;
}

}  // namespace

Picture ReadPpm(const std::string& path) {
  const std::vector<uint8_t> b = ReadFileBytes(path);
  if (b.size() < 2 || b[0] != 'P' || b[1] != '6') {
    throw Error(path + ": not a binary PPM (P6) file");
  }
  size_t pos = 2;
  const int64_t width = PpmNumber(b, pos, path);
  const int64_t height = PpmNumber(b, pos, path);
  const int64_t maxval = PpmNumber(b, pos, path);
  if (maxval != 255) {
    throw Error(path + ": PPM maxval " + std::to_string(maxval) + " is not supported (only 255)");
  }
  // Exactly one whitespace byte separates the header from the samples.
  if (pos >= b.size() || std::strchr(" \t\r\n", b[pos]) == nullptr) {
    throw Error(path + ": malformed PPM header");
  }
  ++pos;
  CheckDimensions(width, height);
  Picture pic;
  pic.width = static_cast<int>(width);
  pic.height = static_cast<int>(height);
  const size_t need = pic.Pixels() * 3;
  if (b.size() - pos < need) {
    throw Error(path + ": truncated PPM (" + std::to_string(b.size() - pos) + " sample bytes, " +
                std::to_string(need) + " needed)");
  }
  pic.rgb.assign(b.begin() + pos, b.begin() + pos + need);
  return pic;
}

void WritePpm(const std::string& path, const Picture& pic) {
  const std::string header =
      "P6\n" + std::to_string(pic.width) + " " + std::to_string(pic.height) + "\n255\n";
  std::vector<uint8_t> bytes(header.begin(), header.end());
  bytes.insert(bytes.end(), pic.rgb.begin(), pic.rgb.end());
  WriteFileBytes(path, bytes);
}

// ------------------------------------------------------------------ PNG --
//
// libpng reports errors by longjmp. The functions holding a setjmp below have
// only trivially destructible locals, so a jump never skips a destructor; the
// buffers they fill are owned by their callers.

namespace {

struct PngContext {
  char message[256] = "";
};

void PngOnError(png_structp png, png_const_charp msg) {
  auto* ctx = static_cast<PngContext*>(png_get_error_ptr(png));
  std::snprintf(ctx->message, sizeof ctx->message, "%s", msg);
  png_longjmp(png, 1);
}

// Warnings do not stop a read, and printing them would break the promise of
// at most one line on stderr.
void PngOnWarning(png_structp, png_const_charp) {}

struct PngImageInfo {
  uint32_t width;
  uint32_t height;
  int channels;
};

bool PngReadHeader(png_structp png, png_infop info, std::FILE* f, PngImageInfo* out) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_init_io(png, f);
  png_set_user_limits(png, kMaxDimension, kMaxDimension);
  png_read_info(png, info);
  png_set_expand(png);  // palette to RGB, gray below 8 bits to 8, tRNS to alpha
  png_set_strip_16(png);
  png_set_gray_to_rgb(png);
  png_set_interlace_handling(png);
  png_read_update_info(png, info);
  out->width = png_get_image_width(png, info);
  out->height = png_get_image_height(png, info);
  out->channels = png_get_channels(png, info);
  return true;
}

bool PngReadRows(png_structp png, png_infop info, png_bytepp rows) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_read_image(png, rows);
  png_read_end(png, info);
  return true;
}

bool PngWriteAll(png_structp png, png_infop info, std::FILE* f, const PngImageInfo& image,
                 png_bytepp rows) {
  if (setjmp(png_jmpbuf(png))) return false;
  png_init_io(png, f);
  png_set_IHDR(png, info, image.width, image.height, 8,
               image.channels == 4 ? PNG_COLOR_TYPE_RGBA : PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
               PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
  png_write_info(png, info);
  png_write_image(png, rows);
  png_write_end(png, info);
  return true;
}

}  // namespace

Picture ReadPng(const std::string& path) {
  FilePtr f = OpenFile(path, "rb");
  PngContext ctx;
  png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, &ctx, PngOnError, PngOnWarning);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  struct Guard {
    png_structp* png;
    png_infop* info;
    ~Guard() { png_destroy_read_struct(png, info, nullptr); }
  } guard{&png, &info};
  if (png == nullptr || info == nullptr) throw Error(path + ": cannot start the PNG reader");

  PngImageInfo image{};
  if (!PngReadHeader(png, info, f.get(), &image)) {
    throw Error(path + ": PNG error: " + ctx.message);
  }
  CheckDimensions(image.width, image.height);
  if (image.channels != 3 && image.channels != 4) {
    throw Error(path + ": unsupported PNG layout (" + std::to_string(image.channels) +
                " channels)");
  }
  const size_t row_bytes = static_cast<size_t>(image.width) * image.channels;
  std::vector<uint8_t> pixels(row_bytes * image.height);
  std::vector<png_bytep> rows(image.height);
  for (uint32_t y = 0; y < image.height; ++y) rows[y] = &pixels[y * row_bytes];
  if (!PngReadRows(png, info, rows.data())) throw Error(path + ": PNG error: " + ctx.message);

  Picture pic;
  pic.width = static_cast<int>(image.width);
  pic.height = static_cast<int>(image.height);
  const size_t n = pic.Pixels();
  if (image.channels == 3) {
    pic.rgb = std::move(pixels);
  } else {
    pic.rgb.resize(n * 3);
    pic.alpha.resize(n);
    for (size_t i = 0; i < n; ++i) {
      std::memcpy(&pic.rgb[i * 3], &pixels[i * 4], 3);
      pic.alpha[i] = pixels[i * 4 + 3];
    }
  }
  return pic;
}

void WritePng(const std::string& path, const Picture& pic) {
  bool opaque = true;
  for (uint8_t a : pic.alpha) opaque = opaque && a == 255;
  const int channels = opaque ? 3 : 4;
  std::vector<uint8_t> pixels;
  if (channels == 3) {
    pixels = pic.rgb;
  } else {
    pixels.resize(pic.Pixels() * 4);
    for (size_t i = 0; i < pic.Pixels(); ++i) {
      std::memcpy(&pixels[i * 4], &pic.rgb[i * 3], 3);
      pixels[i * 4 + 3] = pic.alpha[i];
    }
  }
  const size_t row_bytes = static_cast<size_t>(pic.width) * channels;
  std::vector<png_bytep> rows(pic.height);
  for (int y = 0; y < pic.height; ++y) rows[y] = &pixels[y * row_bytes];

  FilePtr f = OpenFile(path, "wb");
  PngContext ctx;
  png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, &ctx, PngOnError, PngOnWarning);
  png_infop info = png ? png_create_info_struct(png) : nullptr;
  struct Guard {
    png_structp* png;
    png_infop* info;
    ~Guard() { png_destroy_write_struct(png, info); }
  } guard{&png, &info};
  if (png == nullptr || info == nullptr) throw Error(path + ": cannot start the PNG writer");

  const PngImageInfo image{static_cast<uint32_t>(pic.width), static_cast<uint32_t>(pic.height),
                           channels};
  if (!PngWriteAll(png, info, f.get(), image, rows.data())) {
    throw Error(path + ": PNG error: " + ctx.message);
  }
  CloseWritten(std::move(f), path);
}

}  // namespace zylconv
