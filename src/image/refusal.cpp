#include "image/refusal.h"

#include <cstdio>

#include "LmImagingLib/PixelTypeFactory.h"

namespace LmImagingLib {

ConversionResult Refused(std::string message) { return {LmBaseLib::Result::INVALID_PARAMETER, std::move(message)}; }

std::string Hex(std::uint64_t value) {
  char text[24];
  std::snprintf(text, sizeof text, "0x%llX", static_cast<unsigned long long>(value));
  return text;
}

std::string Label(const PixelTypeID& type) {
  return "'" + std::string(PixelTypeFactory::GetPixelTypeName(type)) + "' (" + Hex(static_cast<std::uint64_t>(type)) +
         ")";
}

}  // namespace LmImagingLib
