#include "named_type.h"

#include <cstdint>
#include <limits>
#include <optional>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/V4L2.h"
#include "error.h"
#include "numbers.h"
#include "pixel_type_names.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

constexpr char kAllowed[] =
    "; allowed: a PFNC name or code, a V4L2 fourcc, or an id, a name or a class name that `lmimaging types` lists";

NamedType Named(const PFNCFormat& format) {
  constexpr unsigned long kOfYuv = ConversionFlags::kFullRange | ConversionFlags::kBT709;
  return {format.type, format.flags & ~kOfYuv, format.flags & kOfYuv};
}

// Why a format that the convention knows is none here; empty of an unknown one.
std::string ReasonOf(const PFNCResult& camera) {
  return std::string(camera.reason).find("unknown") == std::string::npos ? camera.reason : "";
}

NamedType FindNumber(const std::string& argument, const std::string& text, std::uint64_t number) {
  const auto id = static_cast<PixelTypeID>(number);
  if (id >= 0 && PixelTypeFactory::HasPixelType(id)) return {id};
  const bool isCode = number <= std::numeric_limits<std::uint32_t>::max();
  const PFNCResult camera = isCode ? FindPFNC(static_cast<std::uint32_t>(number)) : FindPFNC(nullptr);
  if (camera) return Named(*camera.format);
  const std::string reason = ReasonOf(camera);
  throw ToolError(argument, "no pixel type has the id or the PFNC code '" + text + "'" +
                                (reason.empty() ? "" : "; " + reason) + kAllowed);
}

// The formats with a fourcc: more than one where names differ in the case of a letter alone.
std::vector<V4L2Format> FindFourccs(const std::string& text, bool inAnyCase) {
  std::vector<V4L2Format> found;
  for (std::size_t i = 0; const V4L2Format* const format = EnumV4L2(i); ++i) {
    const bool isIt = inAnyCase ? Lower(format->name) == Lower(text) : format->name == text;
    if (isIt) found.push_back(*format);
  }
  return found;
}

NamedType OneOf(const std::string& argument, const std::string& text, const std::vector<V4L2Format>& formats) {
  if (formats.size() == 1) return {formats.front().type, formats.front().flags};
  std::string spellings;
  for (const V4L2Format& format : formats)
    spellings += (spellings.empty() ? "'" : ", '") + std::string(format.name) + "'";
  throw ToolError(argument, "'" + text + "' is several V4L2 fourccs in other cases; allowed: one of " + spellings);
}

NamedType OneOf(const std::string& argument, const std::string& text, const std::vector<PixelTypeID>& types) {
  if (types.size() == 1) return {types.front()};
  std::string ids;
  for (const PixelTypeID id : types) ids += (ids.empty() ? "" : ", ") + HexID(id) + " (" + ClassName(id) + ")";
  throw ToolError(argument, "'" + text + "' names several pixel types; allowed: one of the ids " + ids);
}

}  // namespace

NamedType FindNamedType(const std::string& argument, const std::string& text) {
  if (text.find('\0') != std::string::npos) {  // where a C string would end
    throw ToolError(argument,
                    "a text with a null character names no pixel type; allowed: the names of `lmimaging types`");
  }
  if (const std::optional<std::uint64_t> number = ParseWhole(text)) return FindNumber(argument, text, *number);
  // What cameras call a format wins over the name of a class.
  const PFNCResult camera = FindPFNC(text.c_str());
  if (camera) return Named(*camera.format);
  if (const auto formats = FindFourccs(text, false); !formats.empty()) return OneOf(argument, text, formats);
  if (const auto types = TypesNamed(text); !types.empty()) return OneOf(argument, text, types);
  if (const auto formats = FindFourccs(text, true); !formats.empty()) return OneOf(argument, text, formats);
  if (const std::string reason = ReasonOf(camera); !reason.empty()) {
    throw ToolError(argument, "no pixel type is named '" + text + "'; " + reason + kAllowed);
  }
  const std::string closest = ClosestNames(text);
  throw ToolError(argument, "no pixel type is named '" + text + "'" +
                                (closest.empty() ? "" : " (did you mean " + closest + "?)") + kAllowed);
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
