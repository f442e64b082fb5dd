#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "LmImagingLib/PixelTypeFactory.h"
#include "converters/families.h"

namespace LmImagingLib::Builtin {

/// The built-in converters; they live as long as the library.
std::vector<std::unique_ptr<const PixelConverter>>& Converters();

/// Makes a converter and registers it for a pair that has none yet. (Every type already has its identity.)
template <class Converter, class... Arguments>
void Add(const PixelTypeID& from, const PixelTypeID& to, Arguments&&... arguments) {
  if (PixelTypeFactory::HasConverter(from, to)) return;
  Converters().push_back(std::make_unique<const Converter>(from, to, std::forward<Arguments>(arguments)...));
  PixelTypeFactory::RegisterPixelConverter(from, to, Converters().back().get());
}

/// Registers a chain through `between`, to which and from which converters are already registered.
void AddChain(const PixelTypeID& from, const PixelTypeID& between, const PixelTypeID& to);

/// Registers the source type's identity for a pair whose types differ only in the order of the lines.
void AddIdentity(const PixelTypeID& from, const PixelTypeID& to);

/// Every colour type that converters write. RGB24 and BGR24 pixels take 3 bytes under packed and unpacked ids alike.
inline constexpr PixelTypeID kColorDestinations[] = {0x20001, 0x20002, 0x420002, 0x2000A, 0x42000A, 0x20006, 0x420006,
                                                     0x20003, 0x2000B, 0x42000B, 0x20007, 0x820002, 0x82000A};
/// Every gray type that converters write.
inline constexpr PixelTypeID kGrayDestinations[] = {0x10001, 0x10002, 0x10003, 0x10004, 0x10005};

/// Registers the members of a family to every colour type other than the source itself.
template <template <class> class Family, class... Arguments>
void AddColor(const PixelTypeID& from, Arguments... arguments) {
  Add<Family<OutputRGB16>>(from, 0x20001, arguments...);
  for (const PixelTypeID to : {0x20002, 0x420002, 0x2000A, 0x42000A}) Add<Family<OutputRGB24>>(from, to, arguments...);
  for (const PixelTypeID to : {0x20006, 0x420006}) Add<Family<OutputBGR24>>(from, to, arguments...);
  for (const PixelTypeID to : {0x20003, 0x2000B, 0x42000B}) Add<Family<OutputRGB32>>(from, to, arguments...);
  Add<Family<OutputBGR32>>(from, 0x20007, arguments...);
  for (const PixelTypeID to : {0x820002, 0x82000A}) Add<Family<OutputPlanar24>>(from, to, arguments...);
}

/// The order of the taps that the id's dual-output mode tells.
TapOrder TapOrderOf(const PixelTypeID& id);

/// The right shift that brings a sample of `bits` bits to 8; Normalized samples are aligned to the top of 16 bits.
constexpr unsigned long ShiftOf(const PixelTypeID& id, unsigned long bits) {
  return (id & kNormalizedFlag) != 0 ? 8 : bits - 8;
}

template <class Output>
using Grayscale8To = GrayscaleTo<unsigned char, Output>;
template <class Output>
using Grayscale16To = GrayscaleTo<unsigned short, Output>;

}  // namespace LmImagingLib::Builtin
