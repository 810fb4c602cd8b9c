// The unit of the report's measures: a twentieth of a point.
#pragma once

namespace tonvale {

inline constexpr int kTwipsPerInch = 1440;
inline constexpr int kTwipsPerHalfPoint = 10;
inline constexpr int kTwipsPerPixel = 15;  // at 96 dpi

// Half points, the unit of sizes and offsets in Rich Text Format, rounded to the nearest.
constexpr int HalfPoints(int twips) {
    const int rest = twips % kTwipsPerHalfPoint;
    constexpr int kHalf = kTwipsPerHalfPoint / 2;
    return twips / kTwipsPerHalfPoint + (rest >= kHalf ? 1 : rest <= -kHalf ? -1 : 0);
}

}  // namespace tonvale
