#pragma once

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <string>

#include "LmImagingLib/Image.h"
#include "LmImagingLib/ToneCurve.h"
#include "LmImagingLib/lmimaging.h"
#include "c/call.h"

// Structs of the interface for C, whose callers may know fewer or more members than this library.
namespace LmImagingLib::C {

/// Checks the size of a struct. A size beyond all reason is memory that nobody set.
template <class Struct>
void CheckStruct(const Struct* given, const char* name) {
  constexpr std::size_t kMostBytes = 4096;
  RequirePointer(given, name);
  if (given->structSize < sizeof given->structSize || given->structSize > kMostBytes) {
    Refuse(std::string(name) + ".structSize is " + std::to_string(given->structSize) +
           "; it is the size of the struct in bytes, " + std::to_string(sizeof(Struct)) + " in this version");
  }
}

/// The struct as this library knows it: members that an older caller lacks are zero. Of a newer caller the members
/// that this library does not know must be zero.
template <class Struct>
Struct Known(const Struct* given, const char* name) {
  CheckStruct(given, name);
  Struct known{};
  std::memcpy(&known, given, std::min(given->structSize, sizeof known));
  const auto* const bytes = reinterpret_cast<const unsigned char*>(given);
  const auto* const end = bytes + std::max(given->structSize, sizeof known);
  if (std::any_of(bytes + sizeof known, end, [](unsigned char byte) { return byte != 0; })) {
    Refuse(std::string(name) + " has members that this version of the library, " + lmiVersion() + ", does not know");
  }
  return known;
}

/// The same; defaults for a null pointer.
template <class Struct>
Struct KnownOrDefault(const Struct* given, const char* name) {
  return given != nullptr ? Known(given, name) : Struct{};
}

/// Fills a struct of the caller, which was checked. Members that this library does not know become zero.
template <class Struct>
void Give(Struct result, Struct* wanted) {
  const std::size_t size = wanted->structSize;
  result.structSize = size;
  std::memset(static_cast<void*>(wanted), 0, size);
  std::memcpy(static_cast<void*>(wanted), &result, std::min(size, sizeof result));
}

/// A size of C++. Those that have no room in 32 bits are refused later.
inline unsigned long Narrow(std::size_t value) {
  return static_cast<unsigned long>(std::min<std::uint64_t>(value, ULONG_MAX));
}

/// The view of an image of C.
inline ImageView ViewOf(const LmiImage* given, const char* name) {
  const LmiImage image = Known(given, name);
  return {image.type, image.data, image.size, Narrow(image.width), Narrow(image.height), image.lineSize};
}

/// Red, green and blue.
inline RGBValues ValuesOf(const double (&values)[3]) { return {values[0], values[1], values[2]}; }
/// The same; three zeros stand for three ones.
inline RGBValues GainsOf(const double (&gains)[3]) {
  const bool isUnset = gains[0] == 0 && gains[1] == 0 && gains[2] == 0;
  return isUnset ? RGBValues{1, 1, 1} : ValuesOf(gains);
}

/// Refuses a value that is none of a row of names, which count from 0.
template <std::size_t count>
void CheckChoice(std::uint32_t value, const char* name, const char* const (&choices)[count]) {
  if (value < count) return;
  std::string message = std::string(name) + " is " + std::to_string(value) + "; allowed:";
  for (std::size_t i = 0; i < count; ++i) {
    message += (i == 0 ? " " : ", ") + std::string(choices[i]) + " (" + std::to_string(i) + ")";
  }
  Refuse(message);
}

/// The depth of a conversion.
inline ConversionDepth DepthOf(std::uint32_t depth, const char* name) {
  CheckChoice(depth, name, {"LMI_DEPTH_FULL", "LMI_DEPTH_EIGHT_BITS"});
  return depth == LMI_DEPTH_FULL ? ConversionDepth::kFull : ConversionDepth::kEightBits;
}

/// A curve, which is checked.
/// @param ofDefault  the kind that `LMI_TONE_DEFAULT` stands for
inline ToneCurve ToneOf(const LmiTone& given, ToneCurve::Kind ofDefault, const std::string& name) {
  CheckChoice(given.kind, (name + ".kind").c_str(),
              {"LMI_TONE_DEFAULT", "LMI_TONE_LINEAR", "LMI_TONE_SRGB", "LMI_TONE_BT709", "LMI_TONE_GAMMA"});
  if (given.reserved != 0) Refuse(name + ".reserved is " + std::to_string(given.reserved) + "; allowed: 0");
  constexpr ToneCurve::Kind kKinds[] = {ToneCurve::kLinear, ToneCurve::kSRGB, ToneCurve::kBT709, ToneCurve::kGamma};
  ToneCurve tone{given.kind == LMI_TONE_DEFAULT ? ofDefault : kKinds[given.kind - 1]};
  if (given.gamma != 0) tone.gamma = given.gamma;
  if (!tone.IsValid()) {
    Refuse(name + ".gamma is " + std::to_string(given.gamma) + "; allowed: a number above 0, and 0 for 2.2");
  }
  return tone;
}

}  // namespace LmImagingLib::C
