// The format table of zylconv: every format converts to and from one hub
// picture (8-bit RGB interleaved) through library calls, so N formats need 2N
// conversions rather than N^2, and the demo can run each one without knowing
// what it is.
#ifndef ZYLCONV_FORMATS_H_
#define ZYLCONV_FORMATS_H_

#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "zylcc.h"

namespace zylconv {

// Every user-facing failure; main() prints it as one line.
class Error : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

// Bounds on picture size, so that a hostile header fails with a message
// instead of exhausting memory: 16384 x 8192 at most in pixel count.
constexpr int kMaxDimension = 65536;
constexpr int64_t kMaxPixels = int64_t{1} << 27;

// Throws unless 1 <= width, height <= kMaxDimension and the pixel count fits.
void CheckDimensions(int64_t width, int64_t height);

// The hub. Alpha is carried beside the RGB so that a file with alpha keeps it
// through a conversion to another file with alpha; empty means opaque.
struct Picture {
  int width = 0;
  int height = 0;
  std::vector<uint8_t> rgb;    // width * height * 3, rows tightly packed
  std::vector<uint8_t> alpha;  // width * height, or empty

  ZylSize Size() const { return ZylSize{width, height}; }
  size_t Pixels() const { return static_cast<size_t>(width) * static_cast<size_t>(height); }
};

// One plane of a raw file: its interleaved channel count and its subsampling
// (a plane of a 4:2:0 file has x_sub = y_sub = 2; odd sizes round up).
struct PlaneLayout {
  int channels;
  int x_sub = 1;
  int y_sub = 1;
};

// A raw file in memory: the planes one after the other, rows tightly packed.
// The alpha of a layout is the fourth channel of a single 4-channel plane, or
// the fourth plane of a planar layout.
class RawImage {
 public:
  RawImage(int width, int height, std::vector<PlaneLayout> planes);

  // The byte count of a raw file of this layout; throws if it cannot be held.
  static size_t FileBytes(int width, int height, const std::vector<PlaneLayout>& planes);

  int width() const { return width_; }
  int height() const { return height_; }
  ZylSize Size() const { return ZylSize{width_, height_}; }
  int PlaneCount() const { return static_cast<int>(planes_.size()); }
  const PlaneLayout& Layout(int plane) const { return planes_[plane]; }
  int PlaneWidth(int plane) const;
  int PlaneHeight(int plane) const;
  int Step(int plane) const;  // bytes per row
  uint8_t* Plane(int plane) { return bytes_.data() + offsets_[plane]; }
  const uint8_t* Plane(int plane) const { return bytes_.data() + offsets_[plane]; }
  bool HasAlpha() const;
  std::vector<uint8_t>& bytes() { return bytes_; }
  const std::vector<uint8_t>& bytes() const { return bytes_; }

  // Moves alpha between the hub and this image's alpha channel or plane.
  void StoreAlpha(const Picture& pic);
  void LoadAlpha(Picture& pic) const;

 private:
  int width_;
  int height_;
  std::vector<PlaneLayout> planes_;
  std::vector<size_t> offsets_;
  std::vector<uint8_t> bytes_;
};

// Runs library calls: turns an error status into an Error naming the export,
// reports warnings once, and for the demo repeats each call and keeps the
// median time (the calls are stateless, so repeating one changes nothing).
class CallRunner {
 public:
  explicit CallRunner(int runs = 1) : runs_(runs < 1 ? 1 : runs) {}

  void Call(const char* export_name, const std::function<ZylStatus()>& call);

  // Sum of the median times of the calls made so far.
  double seconds() const { return seconds_; }

 private:
  int runs_;
  double seconds_ = 0.0;
};

// The symbolic name of a status code, or "unknown status".
const char* StatusName(ZylStatus status);

// One direction of a format: the exports it calls, in order, and the code
// that calls them. An empty export list means a plain repack.
struct Encoder {
  std::vector<std::string> exports;
  std::function<void(const Picture&, RawImage&, CallRunner&)> run;
  // Whether the exports themselves write the file's alpha; otherwise it is
  // stored around them, and a route that should carry alpha cannot hide a
  // failure to do so behind that copy.
  bool writes_alpha = false;
};
struct Decoder {
  std::vector<std::string> exports;
  std::function<void(const RawImage&, Picture&, CallRunner&)> run;
};

// A way to write and read a format. A format may list several routes through
// different exports; they must give the same bytes, which the demo checks.
// A route whose decoder has no `run` writes the format but cannot read it yet.
// BT.709 routes are taken with --matrix 709 and compared only among themselves.
struct Route {
  Encoder encode;
  Decoder decode;
  bool bt709 = false;
};

enum class Container { kRaw, kPpm, kPng };

struct Format {
  std::string name;
  std::string description;
  Container container;
  std::vector<PlaneLayout> planes;  // raw formats only
  std::vector<Route> routes;        // raw formats only; convert uses the first
};

const std::vector<Format>& Formats();
const Format* FindFormat(const std::string& name);  // nullptr if unknown

// Hub -> raw file and back through a route. Alpha moves by the layout, around
// the route, so routes whose exports leave alpha untouched still carry it.
RawImage Encode(const Format& format, const Route& route, const Picture& pic, CallRunner& runner);
Picture Decode(const Route& route, const RawImage& raw, CallRunner& runner);

}  // namespace zylconv

#endif  // ZYLCONV_FORMATS_H_
