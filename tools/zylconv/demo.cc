#include "demo.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <system_error>
#include <vector>

#include "image_io.h"
#include "zylcc.h"

namespace zylconv {
namespace {

constexpr int kDemoWidth = 1280;
constexpr int kDemoHeight = 720;
constexpr int kTimedRuns = 9;  // odd, so the median is one of the runs

// Full-intensity bars: they reach the corners of the RGB cube, where the
// chroma of a luma/chroma model clamps.
constexpr uint8_t kBars[8][3] = {{255, 255, 255}, {255, 255, 0}, {0, 255, 255}, {0, 255, 0},
                                 {255, 0, 255},   {255, 0, 0},   {0, 0, 255},   {0, 0, 0}};

// Light to dark skin: the colors a viewer notices first when chroma is off.
constexpr uint8_t kSkin[8][3] = {{255, 224, 196}, {241, 194, 167}, {224, 172, 105}, {198, 134, 66},
                                 {175, 110, 80},  {141, 85, 36},   {110, 68, 48},   {66, 40, 30}};

int Ramp(int i, int n) { return n > 1 ? (i * 255 + (n - 1) / 2) / (n - 1) : 0; }

// Gray, red, green, blue for bands 0..3.
void RampColor(int band, int v, uint8_t* rgb) {
  for (int c = 0; c < 3; ++c) rgb[c] = (band == 0 || band == c + 1) ? v : 0;
}

struct RoundTrip {
  int max_error = 0;
  double psnr = 0.0;  // infinity when exact
};

RoundTrip Compare(const Picture& a, const Picture& b) {
  RoundTrip r;
  double squares = 0.0;
  for (size_t i = 0; i < a.rgb.size(); ++i) {
    const int d = std::abs(a.rgb[i] - b.rgb[i]);
    r.max_error = std::max(r.max_error, d);
    squares += static_cast<double>(d) * d;
  }
  const double mse = squares / static_cast<double>(a.rgb.size());
  r.psnr = mse == 0.0 ? INFINITY : 10.0 * std::log10(255.0 * 255.0 / mse);
  return r;
}

std::string JoinExports(const std::vector<std::string>& exports) {
  if (exports.empty()) return "(repack)";
  std::string s;
  for (const std::string& e : exports) s += (s.empty() ? "" : "+") + e;
  return s;
}

// "zyliRGBToYUV_8u_C3P3R" -> "C3P3R": the layout tells the routes of one
// format apart in a file name; exports of the same layout that take or give
// B, G, R order ("zyliYCbCrToBGR_8u_P3C3R" -> "bgrP3C3R") are marked too.
std::string LayoutSuffixes(const std::vector<std::string>& exports) {
  std::string s;
  for (const std::string& e : exports) {
    const std::string order = e.find("BGR") != std::string::npos ? "bgr" : "";
    s += (s.empty() ? "" : "-") + order + e.substr(e.rfind('_') + 1);
  }
  return s.empty() ? "repack" : s;
}

// PNGs of the demo are for looking at: the alpha ramp would only hide them.
void WriteOpaquePng(const std::string& path, Picture pic) {
  pic.alpha.clear();
  WritePng(path, pic);
}

}  // namespace

Picture SyntheticPicture(int width, int height) {
  Picture pic;
  pic.width = width;
  pic.height = height;
  pic.rgb.resize(pic.Pixels() * 3);
  pic.alpha.resize(pic.Pixels());
  const int bars_end = height / 3;
  const int ramps_end = height / 2;
  const int skin_end = 2 * height / 3;
  const int ramp_columns = width / 4;
  // Zone plate: phase pi r^2 / (2 r_max) has local frequency r / (2 r_max)
  // cycles per pixel, so it sweeps from flat at the centre to the Nyquist
  // limit at r_max, with the three channels a third of a turn apart.
  const double cx = ramp_columns + (width - ramp_columns) / 2.0;
  const double cy = (skin_end + height) / 2.0;
  const double r_max = std::max(1.0, (width - ramp_columns) / 2.0);
  constexpr double kPi = 3.14159265358979323846;
  for (int y = 0; y < height; ++y) {
    for (int x = 0; x < width; ++x) {
      const size_t i = static_cast<size_t>(y) * width + x;
      uint8_t* px = &pic.rgb[i * 3];
      if (y < bars_end) {
        std::copy(kBars[x * 8 / width], kBars[x * 8 / width] + 3, px);
      } else if (y < ramps_end) {
        RampColor((y - bars_end) * 4 / (ramps_end - bars_end), Ramp(x, width), px);
      } else if (y < skin_end) {
        std::copy(kSkin[x * 8 / width], kSkin[x * 8 / width] + 3, px);
      } else if (x < ramp_columns) {
        RampColor(x * 4 / ramp_columns, Ramp(y - skin_end, height - skin_end), px);
      } else {
        const double dx = x - cx;
        const double dy = y - cy;
        const double phase = kPi * (dx * dx + dy * dy) / (2.0 * r_max);
        for (int c = 0; c < 3; ++c) {
          px[c] =
              static_cast<uint8_t>(std::lround(127.5 + 127.5 * std::cos(phase + c * 2 * kPi / 3)));
        }
      }
      pic.alpha[i] = static_cast<uint8_t>((x + y) & 255);
    }
  }
  return pic;
}

int RunDemo(const std::string& out_dir) {
  std::error_code ec;
  std::filesystem::create_directories(out_dir, ec);
  if (ec) throw Error("cannot create '" + out_dir + "': " + ec.message());
  const std::filesystem::path dir(out_dir);

  const ZylLibraryVersion* version = zylccGetLibVersion();
  std::printf("%s %s\n", version->name, version->version);
  const Picture source = SyntheticPicture(kDemoWidth, kDemoHeight);
  const std::string source_path = (dir / "source.png").string();
  WriteOpaquePng(source_path, source);
  std::printf("source: %dx%d synthetic picture (color bars, ramps, skin tones, zone plate) -> %s\n",
              source.width, source.height, source_path.c_str());
  std::printf("speed: median of %d calls; max err and PSNR over R, G, B after the round trip\n\n",
              kTimedRuns);
  std::printf("%-9s %-24s %-24s %7s %8s %9s %9s  %s\n", "format", "forward", "inverse", "max err",
              "PSNR dB", "fwd MP/s", "inv MP/s", "check");

  const double megapixels = static_cast<double>(source.Pixels()) / 1e6;
  int failures = 0;
  for (const Format& format : Formats()) {
    if (format.container != Container::kRaw) continue;
    // Routes of one format and matrix must agree byte for byte in both directions, and a
    // format that has alpha must bring back exactly the source alpha. Routes that cannot read
    // their format yet are timed one way and compared by their bytes only.
    bool have_first[2] = {false, false};
    std::vector<uint8_t> first_bytes[2];
    Picture first_back[2];
    for (size_t k = 0; k < format.routes.size(); ++k) {
      const Route& route = format.routes[k];
      if (route.encode.exports.empty() && route.decode.exports.empty()) continue;
      const int m = route.bt709 ? 1 : 0;
      const bool reads = static_cast<bool>(route.decode.run);
      CallRunner forward(kTimedRuns);
      const RawImage raw = Encode(format, route, source, forward);
      CallRunner inverse(kTimedRuns);
      const Picture back = reads ? Decode(route, raw, inverse) : Picture{};
      const RoundTrip rt = reads ? Compare(source, back) : RoundTrip{};

      std::string check = "ok";
      if (!have_first[m]) {
        have_first[m] = true;
        first_bytes[m] = raw.bytes();
        first_back[m] = back;
      } else if (raw.bytes() != first_bytes[m]) {
        check = "MISMATCH (file bytes differ from the first route)";
      } else if (back.rgb != first_back[m].rgb) {
        check = "MISMATCH (decoded RGB differs from the first route)";
      }
      if (check == "ok" && raw.HasAlpha() && back.alpha != source.alpha) check = "ALPHA LOST";
      if (check != "ok") ++failures;

      const auto rate = [&](const CallRunner& r) {
        return r.seconds() > 0.0 ? megapixels / r.seconds() : INFINITY;
      };
      if (!reads) {
        if (check == "ok") check = "ok, write only";
        std::printf("%-9s %-24s %-24s %7s %8s %9.1f %9s  %s\n", format.name.c_str(),
                    JoinExports(route.encode.exports).c_str(), "(not yet supported)", "-", "-",
                    rate(forward), "-", check.c_str());
        continue;
      }
      // BT.709 routes may share their layouts with BT.601 ones: the matrix goes in the name.
      const std::string png = format.name + (route.bt709 ? "709" : "") + "_" +
                              LayoutSuffixes(route.encode.exports) + "_" +
                              LayoutSuffixes(route.decode.exports) + ".png";
      WriteOpaquePng((dir / png).string(), back);
      std::printf("%-9s %-24s %-24s %7d %8.2f %9.1f %9.1f  %s\n", format.name.c_str(),
                  JoinExports(route.encode.exports).c_str(),
                  JoinExports(route.decode.exports).c_str(), rt.max_error, rt.psnr, rate(forward),
                  rate(inverse), check.c_str());
    }
  }
  std::printf("\nPNGs written to %s\n", out_dir.c_str());
  if (failures > 0) {
    std::fprintf(stderr, "zylconv: demo: %d conversion(s) failed their check\n", failures);
    return 1;
  }
  return 0;
}

}  // namespace zylconv
