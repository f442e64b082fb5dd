#include "model/image.h"

#include <cstring>

#include "model/convert.h"
#include "model/kernels.h"

namespace model {
namespace {

constexpr std::size_t kRoom = 64;  // groups of pixels pass the ends of lines

using Content = std::vector<std::uint8_t>;

Content Copied(const View& source, const View& destination, const Options& options, const Content& from,
               Content after) {
  const bool interlaced = (source.type & 0x200000) != 0;
  for (std::size_t index = 0; index < source.Lines(); ++index) {
    const std::size_t y = index % source.height;
    if (y < options.firstLine || y >= options.firstLine + options.lines) continue;
    std::size_t at = index * source.line;
    if (interlaced) {
      if (y >= source.height / 2 * 2) continue;
      const bool secondHalf = (y % 2 == 1) != ((options.flags & 1) != 0);
      at = (secondHalf ? source.height * source.line / 2 : 0) + y / 2 * source.line;
    }
    std::memcpy(&after[index * destination.line], &from[at], destination.OwnBytes(index));
  }
  return after;
}

}  // namespace

View::View(Id theType, std::size_t theWidth, std::size_t theHeight, std::size_t lineSize)
    : type(theType), width(theWidth), height(theHeight) {
  const Stage& reader = SourceOf(type).reader;
  if ((type & 0x800000) != 0) planes = 8 * SourceOf(type).bytes / reader.sourceBits;
  lineBytes = (width * reader.sourceBits + 7) / 8;
  if (reader.kernel == YUV411 && width % 4 == 2) ++lineBytes;  // the V of the last two pixels
  line = lineSize != 0 ? lineSize : DenseLine(type, width);
  if (Lines() == 1) line = DenseLine(type, width);  // the next line may be gigabytes away: it does not matter
}

std::size_t View::DenseLine(Id type, std::size_t width) { return SourceOf(type).reader.SourceLineSize(width); }

Content ConvertImage(const View& source, const View& destination, const Options& options, const Content& from,
                     const Content& before) {
  const Route route = RouteOf(source.type, destination.type);
  if (route.first.kernel == CopyLine && !route.second) return Copied(source, destination, options, from, before);

  Call call{};
  call.sourceWidth = static_cast<std::uint32_t>(source.width);
  call.sourceHeight = static_cast<std::uint32_t>(source.height);
  call.destinationWidth = call.pixelsPerLine = static_cast<std::uint32_t>(destination.width);
  call.destinationHeight = call.lines = static_cast<std::uint32_t>(destination.height);
  call.flags = options.flags;
  call.filter = options.filter;
  call.sourceLine = source.line;
  call.stride = destination.line;
  Content whole = from, converted = before;
  whole.resize(from.size() + kRoom);
  converted.resize(before.size() + kRoom);
  Bytes in(whole), out(converted), between(Content((source.width + kRoom) * (source.height + 1) * 2));
  Convert(route, call, in, out, between);

  Content after = before;
  const std::size_t perLine = IsHalfSize(call) ? 2 : 1;
  for (std::size_t index = 0; index < destination.Lines(); ++index) {
    const std::size_t y = index % destination.height * perLine;
    if (y < options.firstLine || y >= options.firstLine + options.lines) continue;
    std::memcpy(&after[index * destination.line], &out.Content()[index * destination.line],
                destination.OwnBytes(index));
  }
  return after;
}

}  // namespace model
