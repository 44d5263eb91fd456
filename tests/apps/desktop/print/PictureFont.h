#pragma once

#include <gtest/gtest.h>

#include <QFontDatabase>

namespace kk {

inline constexpr char16_t cRedSquare[] = u"\U0001F7E5";

/// A font of one picture, the red square, in the tables that fonts of emojis have (CBDT and CBLC),
/// compressed by qCompress. Made for this test.
inline constexpr char cPictureFont[] =
    "AAADcHjapVJNaxNRFD1vZmzHaLV1EYoUnYVIEVQsEoIUHDMpNaS2Q9qVm3aajk0ksXGSwGzEKBXqTneCq4KIiCjon3"
    "BZdCe0KPixEt2IShbjeTNjOnaj4B3ux7nvzX333PcgAKTQgQrDyuXnujPXNwDFZ/aRlZuynmfW04BqENszsyfHJqzJ"
    "ABCjxAvlutPAoa/XiO/I9YrrLB0vd+8xfkLNVJhQbwVnGL+nHqnUW74GKWKNpq/u+A2eqxDrxMYVp+7eWPn5jPgtca"
    "2x0mxduqx67GeK+Bhkr9TXd63Z+f3j36BG1T4d3bSTPpawcnQcwWqQTawJ/CkizCg9rGCn8Cyy3AUN/yDJ389SgIAS"
    "9aCu4uWO7Zyuluw70hFaEfsU/WluGg6Lh+WDIFS5Y2/438g2l+8fQo14asjEfAX29Lgr6CfiCdpuZtI4EMcK9mG0WD"
    "TsarnV9txmyV1u1xwPRX4GbFRRRgtteHDRRIl2magGhxnl72MRiuq5SxFD00TWZHj/tj09OZA6KEkOFM7nS/Qyb+p9"
    "tI+rV7foFgv5c3P+m88bp4YAHetf5i82/TG78/DjC00fNMwOS/9P0OmmrbV3r8YPn7ggWy1MTOef5hZuhjcRzUy+n+"
    "Hf88v+MHu0krGcvmkaIn5ROu0Qtq/3wS8poHhr";

/// Makes the font known. Once, before the first text: which fonts step in for others is found out
/// one time alone.
inline void NeedPictureFont() {
  static const int font =
      QFontDatabase::addApplicationFontFromData(qUncompress(QByteArray::fromBase64(cPictureFont)));
  ASSERT_GE(font, 0);
}

}  // namespace kk
