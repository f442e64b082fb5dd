// Our methods for bench/quality, as one function of C: a call of the Python module would be part of the time.
#include <cstddef>
#include <cstdint>
#include <memory>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/RGBFilter.h"

namespace {

using namespace LmImagingLib;

constexpr unsigned long kFilterBits = 12, kEntries = 1UL << kFilterBits;

// 8-bit results for each of 4096 values of red, then of green, then of blue.
std::unique_ptr<RGBFilter> FilterOf(const std::uint8_t* curves) {
  auto filter = std::make_unique<RGBFilter>(kFilterBits);
  for (unsigned long i = 0; i < kEntries; ++i) {
    const auto entry = [&](unsigned long channel) {
      return static_cast<unsigned short>(curves[channel * kEntries + i] << (kFilterBits - 8));
    };
    filter->SetRedValue(i, entry(0), false);
    filter->SetGreenValue(i, entry(1), false);
    filter->SetBlueValue(i, entry(2), false);
  }
  return filter;
}

}  // namespace

/// Converts a mosaic, whose first two pixels are red and green, to red, green and blue.
/// @param curves  8-bit results for 12-bit samples, 4096 a colour; null changes no colour
/// @return 0 on success
extern "C" __attribute__((visibility("default"))) int Demosaic(PixelTypeID from, const void* mosaic, PixelTypeID to,
                                                               void* rgb, unsigned long width, unsigned long height,
                                                               unsigned long flags, const std::uint8_t* curves) {
  RegisterExtendedFormats();
  const std::unique_ptr<RGBFilter> filter = curves == nullptr ? nullptr : FilterOf(curves);
  const auto bytes = [&](PixelTypeID type) { return RequiredSize(type, width, height).value_or(0); };
  const ConversionResult result =
      ConvertImage({from, mosaic, bytes(from), width, height}, {to, rgb, bytes(to), width, height},
                   {filter.get(), flags | ConversionFlags::kBayerRG});
  return result.IsOK() ? 0 : 1;
}
