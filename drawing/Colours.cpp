#include "drawing/Colours.h"

#include <array>
#include <cmath>

namespace zdm {

namespace {

constexpr ULONG kWhite = 0x00FFFFFF;
constexpr std::array<ULONG, 10> kNamed = {kWhite,   0xFF0000, 0xFFFF00, 0x00FF00, 0x00FFFF,
                                          0x0000FF, 0xFF00FF, kWhite,   0x808080, 0xC0C0C0};
constexpr std::array<ULONG, 6> kGreys = {0x333333, 0x5B5B5B, 0x848484, 0xADADAD, 0xD6D6D6, kWhite};

/// Of hue 0 to 360 at full saturation; 0 to 1.
double Component(double hue, double shift) {
  const double k = std::fmod(shift + hue / 60.0, 6.0);
  return 1.0 - std::fmax(0.0, std::fmin(std::fmin(k, 4.0 - k), 1.0));
}

ULONG Mixed(double red, double green, double blue) {
  const auto byte = [](double part) { return static_cast<ULONG>(part * 255.0); };
  return byte(red) << 16 | byte(green) << 8 | byte(blue);
}

/// Numbers 10 to 249: 24 hues, in each five brightnesses, full and half saturated.
ULONG Hued(LONG number) {
  constexpr std::array<double, 5> kBrightness = {1.0, 0.65, 0.5, 0.3, 0.15};
  const double hue = static_cast<double>((number - 10) / 10) * 15.0;
  const double brightness = kBrightness[static_cast<std::size_t>(number % 10 / 2)];
  const auto part = [&](double shift) {
    const double full = Component(hue, shift);
    return brightness * (number % 2 == 0 ? full : (full + 1.0) / 2.0);
  };
  return Mixed(part(5.0), part(3.0), part(1.0));
}

}  // namespace

ULONG RgbOf(LONG number) {
  if (number < 1 || number > 255) return kWhite;
  if (number < 10) return kNamed[static_cast<std::size_t>(number)];
  return number < 250 ? Hued(number) : kGreys[static_cast<std::size_t>(number - 250)];
}

LONG NumberOfColour(ULONG rgb) {
  LONG best = kForeground;
  LONG least = 3 * 256 * 256;
  for (LONG number = 1; number <= 255; ++number) {
    LONG distance = 0;
    for (int shift = 0; shift <= 16; shift += 8) {
      const LONG difference =
          static_cast<LONG>(rgb >> shift & 0xFF) - static_cast<LONG>(RgbOf(number) >> shift & 0xFF);
      distance += difference * difference;
    }
    if (distance < least) {
      least = distance;
      best = number;
    }
  }
  return best;
}

}  // namespace zdm
