#pragma once

namespace kk {

/// A place in a view, in device-independent pixels (1/96 inch at 100 % scale), growing to the right
/// and downwards.
struct TPoint {
  int X = 0, Y = 0;
  friend constexpr bool operator==(const TPoint&, const TPoint&) = default;
};

struct TSize {
  int Width = 0, Height = 0;
  friend constexpr bool operator==(const TSize&, const TSize&) = default;
};

/// Right and bottom stand just outside. The rectangle of no size holds no point.
struct TRect {
  int Left = 0, Top = 0, Right = 0, Bottom = 0;

  constexpr int Width() const { return Right - Left; }
  constexpr int Height() const { return Bottom - Top; }
  constexpr bool Contains(const TPoint& iPoint) const {
    return iPoint.X >= Left && iPoint.X < Right && iPoint.Y >= Top && iPoint.Y < Bottom;
  }
  friend constexpr bool operator==(const TRect&, const TRect&) = default;
};

}  // namespace kk
