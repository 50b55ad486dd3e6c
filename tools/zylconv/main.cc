// zylconv: converts image files through the zylcc library and demonstrates
// every conversion it has. Every failure ends as one line on stderr starting
// with "zylconv: " and a non-zero exit status.
#include <cctype>
#include <cstdio>
#include <exception>
#include <new>
#include <string>
#include <vector>

#include "demo.h"
#include "formats.h"
#include "image_io.h"

namespace zylconv {
namespace {

constexpr char kUsage[] =
    "usage:\n"
    "  zylconv demo [--out DIR]\n"
    "      convert a built-in test picture through every conversion and back; write\n"
    "      PNGs into DIR (default ./zylconv-out/) and print errors and speeds\n"
    "  zylconv convert IN OUT [--from FMT] [--to FMT] [--size WxH] [--matrix 601|709]\n"
    "      convert between files; a format left out is taken from the file extension;\n"
    "      raw input formats need --size; --matrix picks BT.601 (default) or BT.709 for\n"
    "      raw formats that have both (i420, yv12, nv12, uyvy), read or written\n"
    "  zylconv list\n"
    "      list the formats and the library exports each one uses\n"
    "  zylconv --help\n";

struct Options {
  std::vector<std::string> positional;
  std::string from;
  std::string to;
  std::string size;
  std::string out;
  std::string matrix;
};

// Parses "--name VALUE" and "--name=VALUE" for the options a command allows.
Options ParseOptions(const std::vector<std::string>& args,
                     const std::vector<std::string>& allowed) {
  Options opts;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& arg = args[i];
    if (arg.size() < 2 || arg.compare(0, 2, "--") != 0) {
      opts.positional.push_back(arg);
      continue;
    }
    std::string name = arg.substr(2);
    std::string value;
    const size_t eq = name.find('=');
    if (eq != std::string::npos) {
      value = name.substr(eq + 1);
      name.resize(eq);
    } else {
      if (i + 1 >= args.size()) throw Error("option --" + name + " needs a value");
      value = args[++i];
    }
    bool known = false;
    for (const std::string& a : allowed) known = known || a == name;
    if (!known) throw Error("unknown option --" + name);
    if (value.empty()) throw Error("option --" + name + " needs a value");
    if (name == "from") opts.from = value;
    if (name == "to") opts.to = value;
    if (name == "size") opts.size = value;
    if (name == "out") opts.out = value;
    if (name == "matrix") opts.matrix = value;
  }
  return opts;
}

// "WxH" with decimal W and H, nothing else.
ZylSize ParseSize(const std::string& text) {
  const size_t x = text.find_first_of("xX");
  const auto number = [&](const std::string& s) -> int64_t {
    if (s.empty() || s.size() > 9) return -1;
    int64_t v = 0;
    for (char c : s) {
      if (c < '0' || c > '9') return -1;
      v = v * 10 + (c - '0');
    }
    return v;
  };
  const int64_t w = x == std::string::npos ? -1 : number(text.substr(0, x));
  const int64_t h = x == std::string::npos ? -1 : number(text.substr(x + 1));
  if (w < 0 || h < 0) throw Error("bad size '" + text + "' (expected WxH, e.g. 640x480)");
  CheckDimensions(w, h);
  return ZylSize{static_cast<int32_t>(w), static_cast<int32_t>(h)};
}

const Format& ResolveFormat(const std::string& given, const std::string& path, const char* option) {
  std::string name = given;
  if (name.empty()) {
    const size_t dot = path.rfind('.');
    const size_t slash = path.find_last_of("/\\");
    if (dot == std::string::npos || (slash != std::string::npos && dot < slash)) {
      throw Error("cannot tell the format of '" + path + "' from its name; give " + option);
    }
    name = path.substr(dot + 1);
    for (char& c : name) c = static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    if (FindFormat(name) == nullptr) {
      throw Error("cannot tell the format of '" + path + "' from its extension; give " + option);
    }
  }
  const Format* format = FindFormat(name);
  if (format == nullptr) {
    throw Error("unknown format '" + name + "' (see zylconv list)");
  }
  return *format;
}

std::string JoinExports(const std::vector<std::string>& exports) {
  std::string s;
  for (const std::string& e : exports) s += (s.empty() ? "" : " + ") + e;
  return s;
}

// Whether a format is converted through library calls (and so through a matrix), rather
// than read or written as RGB by the tool itself (png, ppm, rgb, rgba).
bool UsesMatrix(const Format& format) {
  for (const Route& r : format.routes) {
    if (!r.encode.exports.empty() || !r.decode.exports.empty()) return true;
  }
  return false;
}

// The route `convert` reads or writes a raw format with: the first of the asked matrix, or
// the first of all for a plain repack.
const Route& MatrixRoute(const Format& format, const std::string& matrix) {
  if (!matrix.empty() && matrix != "601" && matrix != "709") {
    throw Error("bad --matrix '" + matrix + "' (expected 601 or 709)");
  }
  const bool bt709 = matrix == "709";
  for (const Route& r : format.routes) {
    if (r.bt709 == bt709 || !UsesMatrix(format)) return r;
  }
  throw Error("format " + format.name + " has no BT." + matrix + " route (see zylconv list)");
}

int Convert(const std::vector<std::string>& args) {
  const Options opts = ParseOptions(args, {"from", "to", "size", "matrix"});
  if (opts.positional.size() != 2) throw Error("convert needs IN and OUT (see zylconv --help)");
  const std::string& in = opts.positional[0];
  const std::string& out = opts.positional[1];
  const Format& from = ResolveFormat(opts.from, in, "--from");
  const Format& to = ResolveFormat(opts.to, out, "--to");
  if (!opts.matrix.empty() && !UsesMatrix(from) && !UsesMatrix(to)) {
    throw Error("--matrix applies to formats converted by the library, not " + from.name + " or " +
                to.name);
  }

  CallRunner runner;
  Picture pic;
  std::vector<std::string> used;
  if (from.container == Container::kRaw) {
    if (opts.size.empty()) throw Error("raw input format " + from.name + " needs --size WxH");
    const ZylSize size = ParseSize(opts.size);
    const size_t need = RawImage::FileBytes(size.width, size.height, from.planes);
    RawImage raw(size.width, size.height, from.planes);
    std::vector<uint8_t> bytes = ReadFileBytes(in);
    if (bytes.size() != need) {
      throw Error(in + ": " + std::to_string(bytes.size()) + " bytes, but " + from.name + " at " +
                  opts.size + " is " + std::to_string(need) + " bytes");
    }
    raw.bytes() = std::move(bytes);
    const Route& route = MatrixRoute(from, opts.matrix);
    if (!route.decode.run) {
      throw Error("reading " + from.name + " is not yet supported (it can be written)");
    }
    pic = Decode(route, raw, runner);
    used = route.decode.exports;
  } else {
    if (!opts.size.empty())
      throw Error("--size is for raw input only; " + from.name + " files carry their size");
    pic = from.container == Container::kPng ? ReadPng(in) : ReadPpm(in);
  }

  if (to.container == Container::kRaw) {
    const Route& route = MatrixRoute(to, opts.matrix);
    WriteFileBytes(out, Encode(to, route, pic, runner).bytes());
    used.insert(used.end(), route.encode.exports.begin(), route.encode.exports.end());
  } else if (to.container == Container::kPng) {
    WritePng(out, pic);
  } else {
    WritePpm(out, pic);
  }
  std::printf("%s (%s) -> %s (%s), %dx%d%s%s\n", in.c_str(), from.name.c_str(), out.c_str(),
              to.name.c_str(), pic.width, pic.height, used.empty() ? "" : ", via ",
              JoinExports(used).c_str());
  return 0;
}

int List(const std::vector<std::string>& args) {
  if (!args.empty()) throw Error("list takes no arguments");
  std::printf(
      "convert uses the first route of a format ([convert], or [--matrix 709] for BT.709);\n"
      "demo runs every route that calls the library and checks that the routes of one\n"
      "format and matrix agree byte for byte.\n\n");
  for (const Format& f : Formats()) {
    std::printf("%-9s %s\n", f.name.c_str(), f.description.c_str());
    if (f.container != Container::kRaw) {
      std::printf("%-9s file with its own header; no library call\n", "");
      continue;
    }
    bool marked[2] = {false, false};  // the first route of each matrix is convert's
    for (const Route& r : f.routes) {
      const std::string write = r.encode.exports.empty() ? "repack" : JoinExports(r.encode.exports);
      const std::string read = !r.decode.run              ? "not yet supported"
                               : r.decode.exports.empty() ? "repack"
                                                          : JoinExports(r.decode.exports);
      const char* mark = marked[r.bt709] ? "" : r.bt709 ? "[--matrix 709]" : "[convert]";
      marked[r.bt709] = true;
      std::printf("%-9s write: %-24s read: %-24s %s\n", "", write.c_str(), read.c_str(), mark);
    }
  }
  return 0;
}

int Run(const std::vector<std::string>& args) {
  if (args.empty()) {
    std::fputs(kUsage, stderr);
    return 2;
  }
  const std::string& command = args[0];
  const std::vector<std::string> rest(args.begin() + 1, args.end());
  if (command == "--help" || command == "-h" || command == "help") {
    std::fputs(kUsage, stdout);
    return 0;
  }
  if (command == "demo") {
    const Options opts = ParseOptions(rest, {"out"});
    if (!opts.positional.empty()) throw Error("demo takes no file arguments (use --out DIR)");
    return RunDemo(opts.out.empty() ? "zylconv-out" : opts.out);
  }
  if (command == "convert") return Convert(rest);
  if (command == "list") return List(rest);
  throw Error("unknown command '" + command + "' (see zylconv --help)");
}

// The error line must stay one line whatever a file name contains.
void PrintError(const std::string& message) {
  std::string line = message;
  for (char& c : line) {
    if (c == '\n' || c == '\r') c = ' ';
  }
  std::fprintf(stderr, "zylconv: %s\n", line.c_str());
}

}  // namespace
}  // namespace zylconv

int main(int argc, char** argv) {
  try {
    return zylconv::Run(std::vector<std::string>(argv + 1, argv + argc));
  } catch (const zylconv::Error& e) {
    zylconv::PrintError(e.what());
  } catch (const std::bad_alloc&) {
    zylconv::PrintError("out of memory");
  } catch (const std::exception& e) {
    zylconv::PrintError(e.what());
  }
  return 1;
}
