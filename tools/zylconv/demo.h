// `zylconv demo`: every conversion of the format table on a built-in picture.
#ifndef ZYLCONV_DEMO_H_
#define ZYLCONV_DEMO_H_

#include <string>

#include "formats.h"

namespace zylconv {

// Color bars, horizontal and vertical ramps, skin tones and a color zone
// plate, with a diagonal alpha ramp; the same pixels on every run.
Picture SyntheticPicture(int width, int height);

// Writes source.png and one PNG per round trip into out_dir and prints the
// table. Returns the exit status: non-zero if two routes of one format
// disagree or a format with alpha loses it.
int RunDemo(const std::string& out_dir);

}  // namespace zylconv

#endif  // ZYLCONV_DEMO_H_
