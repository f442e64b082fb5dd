// A library that uses ours, for a program that opens and closes it.
#include <cstdint>
#include <vector>

#include "LmImagingLib/LmImagingLib.h"

using namespace LmImagingLib;

/// Converts some images: lines, a mosaic with gains, a chain through its own scratch and one through an application's
/// stage. Returns a digest of them.
extern "C" __attribute__((visibility("default"))) unsigned ConvertSome() {
  constexpr unsigned long kWidth = 300, kHeight = 40;
  const std::vector<std::uint8_t> source(kWidth * kHeight * 4, 77);
  std::vector<std::uint8_t> destination(kWidth * kHeight * 4);
  RGBFilter gains(8);
  gains.SetMultipliers(1.6, 1.0, 1.09);
  unsigned digest = 0;
  const struct {
    PixelTypeID from, to;
    unsigned long flags;
  } calls[] = {{0x40001, 0x420002, 0}, {0x20012, 0x420002, 0x140}, {0x420012, 0x20007, 0x140}, {0x10006, 0x20007, 0}};
  for (const auto& call : calls) {
    PixelTypeFactory::FindConverter(call.from, call.to)
        ->Convert(&gains, source.data(), kWidth, kHeight, destination.data(), kWidth, kHeight, kWidth, kHeight,
                  call.flags, 0, nullptr, nullptr);
    for (const std::uint8_t byte : destination) digest = digest * 31 + byte;
  }
  return digest;
}

/// Adds a type, and asks for all names.
extern "C" __attribute__((visibility("default"))) bool UseRegistry() {
  constexpr PixelTypeID kOwn = (PixelTypeID{0x717} << 32) | 0x10001;
  const Grayscale8 type(kOwn);
  bool fine = PixelTypeFactory::RegisterPixelType(kOwn, &type, nullptr).IsOK();
  PixelTypeID from = 0, to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, from, to); i += 97) {
    fine = fine && PixelTypeFactory::GetPixelTypeName(from)[0] != 0 && PixelTypeFactory::HasConverter(from, to);
  }
  return fine;
}
