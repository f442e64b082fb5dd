#include "named_type.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <limits>
#include <optional>

#include "LmImagingLib/PixelTypeFactory.h"
#include "error.h"
#include "numbers.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

bool EqualInAnyCase(const std::string& a, const std::string& b) {
  const auto equal = [](unsigned char x, unsigned char y) { return std::tolower(x) == std::tolower(y); };
  return std::equal(a.begin(), a.end(), b.begin(), b.end(), equal);
}

// A camera's name as it is spelt, and else in any case.
PFNCResult FindName(const std::string& text) {
  const PFNCResult exact = FindPFNC(text.c_str());
  for (std::size_t i = 0; const PFNCFormat* const format = exact ? nullptr : EnumPFNC(i); ++i) {
    if (EqualInAnyCase(format->name, text)) return {format, nullptr};
  }
  return exact;
}

PFNCResult FindFormat(const std::string& text) {
  const std::optional<std::uint64_t> number = ParseWhole(text);
  if (!number) return FindName(text);
  if (*number <= std::numeric_limits<std::uint32_t>::max()) return FindPFNC(static_cast<std::uint32_t>(*number));
  return FindPFNC(nullptr);
}

// The type that the text names here; nothing if it names none.
std::optional<PixelTypeID> FindOwn(const std::string& argument, const std::string& text, std::string& fault) {
  try {
    return ParsePixelType(argument, text);
  } catch (const ToolError& error) {
    fault = error.what();
    return std::nullopt;
  }
}

}  // namespace

NamedType FindNamedType(const std::string& argument, const std::string& text) {
  if (text.find('\0') != std::string::npos) {  // where a C string would end
    throw ToolError(argument,
                    "a text with a null character names no pixel type; allowed: the names of `lmimaging types`");
  }
  std::string fault;
  const std::optional<PixelTypeID> own = FindOwn(argument, text, fault);
  const PFNCResult camera = FindFormat(text);
  if (!own && !camera) throw ToolError(fault + ", or a PFNC name or code; as one of those, " + camera.reason);
  // What a camera calls RGB16 is not the class of that name. An id is never a camera's code.
  if (own && (!camera || ParseWhole(text))) return {*own};
  return {camera.format->type, camera.format->flags};
}

std::vector<const PFNCFormat*> FormatsOf(const PixelTypeID& type) {
  std::vector<const PFNCFormat*> formats;
  for (std::size_t i = 0; const PFNCFormat* const format = EnumPFNC(i); ++i) {
    if (format->type == type) formats.push_back(format);
  }
  // A type of the same bytes as another one has that one's name.
  const PFNCFormat* const same = FindPFNC(type, 0);
  if (formats.empty() && same != nullptr) formats.push_back(same);
  return formats;
}

}  // namespace LmTool
