#pragma once

#include <optional>
#include <string>

#include "LmImagingLib/PixelTypeFactory.h"
#include "image/layout.h"
#include "image/refusal.h"

// The checks of a view by itself.
namespace LmImagingLib {

inline std::string Decimal(std::uint64_t value) { return std::to_string(value); }

template <class View>
std::string Size(const View& view) {
  return Decimal(view.width) + " x " + Decimal(view.height);
}

/// Checks the type of an image.
/// @param name  of the argument
template <class View>
ConversionResult CheckType(const View& view, const char* name) {
  if (PixelTypeFactory::HasPixelType(view.type)) return {};
  return Refused(std::string(name) + ".type is " + Hex(static_cast<std::uint64_t>(view.type)) +
                 ", which is not the id of a registered pixel type");
}

/// Checks the address and the size of an image. Other members are left to `CheckBytes`.
template <class View>
ConversionResult CheckView(const View& view, const char* name) {
  if (view.data == nullptr)
    return Refused(std::string(name) + ".data is null; it must point to the first pixel of the image");
  if (view.width == 0 || view.height == 0) {
    return Refused(std::string(name) + " is " + Size(view) + " pixels; an image has at least one");
  }
  if (view.width > kMostLines || view.height > kMostLines) {
    return Refused(std::string(name) + " is " + Size(view) + " pixels; width and height may be at most " +
                   Decimal(kMostLines));
  }
  return {};
}

/// Checks the line size and the bytes of an image.
/// @param lineSize  becomes the bytes from a line to the next
/// @param bytes  becomes those of the image
template <class View>
ConversionResult CheckBytes(const View& view, const ImageLayout& layout, const char* name, std::uint64_t& lineSize,
                            std::size_t& bytes) {
  if (!layout.HoldsLine(view.width)) {
    return Refused(std::string(name) + ".width is " + Decimal(view.width) + "; a line of " + Label(view.type) +
                   " may take at most " + Decimal(kMostLineBytes) + " bytes");
  }
  const std::uint64_t dense = layout.DenseLine(view.width);
  if (view.lineSize != 0 && view.lineSize < dense) {
    return Refused(std::string(name) + ".lineSize is " + Decimal(view.lineSize) + "; " + Decimal(view.width) +
                   " pixels of " + Label(view.type) + " take " + Decimal(dense) + " bytes (0 stands for that)");
  }
  lineSize = view.lineSize != 0 ? view.lineSize : dense;
  if (lineSize > kMostLineBytes) {
    return Refused(std::string(name) + ".lineSize is " + Decimal(lineSize) + "; it may be at most " +
                   Decimal(kMostLineBytes));
  }
  const std::optional<std::size_t> required = layout.Required(view.width, view.height, lineSize);
  if (!required.has_value() || view.size < *required) {
    return Refused(std::string(name) + ".size is " + Decimal(view.size) + "; " + Size(view) + " pixels of " +
                   Label(view.type) + " in lines of " + Decimal(lineSize) + " bytes take " +
                   (required.has_value() ? Decimal(*required) + " bytes" : "more than can be addressed"));
  }
  bytes = *required;
  return {};
}

}  // namespace LmImagingLib
