#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

#include "model/bytes.h"

namespace model {

/// The tables of a channel of a filter.
struct FilterChannel {
  std::array<std::uint8_t, 256> bytes;
  std::vector<std::uint16_t> entries;
  double multiplier = 0;
  unsigned offset = 0;

  /// The entry for a sample of `depth` bits.
  unsigned At(unsigned sample, unsigned depth, bool byMultiplier) const;
};

/// The lookup tables of a filter.
struct Filter {
  FilterChannel red, green, blue;
  bool byMultipliers = false;  ///< whether all entries come from the multipliers
};

/// The arguments of a conversion, buffers aside.
struct Call {
  std::uint32_t sourceWidth, sourceHeight;
  std::uint32_t destinationWidth, destinationHeight;
  std::uint32_t pixelsPerLine, lines;
  std::uint32_t flags;
  std::uint32_t padding;
  const Filter* filter;        ///< null: the identity
  std::size_t sourceLine = 0;  ///< bytes from a source line to the next; 0 as many as its pixels take
  std::size_t stride = 0;      ///< the same of the destination, padding included
};

/// Whether a mosaic becomes an image of half its size: pixels and lines of the call are then the destination's.
inline bool IsHalfSize(const Call& call) { return (call.flags & 0x10000) != 0; }

/// Whether the samples of a mosaic are filtered, and not the colours that they become.
inline bool FiltersFirst(const Call& call) { return (call.flags & 0x1000) != 0 && call.filter != nullptr; }

struct Color {
  unsigned red, green, blue;
};

enum class Writer { RGB16, RGB24, BGR24, RGB32, BGR32, PLANAR, GRAY, LUMA, RGB48, BGR48, RGB64, BGR64 };

/// How pixels are stored.
struct Destination {
  Writer writer = Writer::RGB24;
  unsigned pixelBytes = 0;     ///< of planes, in each
  unsigned depth = 8;          ///< bits of a sample
  unsigned eightBitShift = 0;  ///< of values of 8 bits, unless at full depth
};

class Line;
using KernelFunction = void(Line&);
using Kernel = KernelFunction*;

/// One converter: what its lines are read with, and how pixels are stored.
struct Stage {
  Kernel kernel = nullptr;
  unsigned sourceBits = 0;  ///< bits that a source pixel takes; a line has the whole bytes of their sum
  bool wholeBytes = false;  ///< whether a line takes the byte, too, that its last bits are in
  unsigned depth = 8;       ///< bits of a sample
  unsigned shift = 0;       ///< below its lowest bit in a word
  Destination to;
  int left = 0, right = 0;  ///< directions of the two taps, both 0 for one tap
  bool interlaced = false;
  bool contained = false;    ///< reads no byte after the samples of a line
  bool copiesPairs = false;  ///< a packed type's own copy: lines are rounded up to whole pairs of pixels

  std::size_t SourceLineSize(std::size_t pixels) const;
  std::size_t DestinationLineSize(std::size_t pixels) const;
};

/// One line (of a mosaic: two) under conversion.
class Line {
 public:
  Line(const Stage& theStage, const Call& theCall, Bytes& source, Bytes& destination)
      : stage(theStage),
        call(theCall),
        pixels(call.pixelsPerLine),
        sourceLineSize(call.sourceLine != 0 ? call.sourceLine : stage.SourceLineSize(call.sourceWidth)),
        stride(call.stride != 0 ? call.stride : stage.DestinationLineSize(call.destinationWidth) + call.padding),
        full((call.flags & 0x800) != 0 && stage.to.depth > 8),
        mSource(source),
        mDestination(destination) {}

  /// Calls the kernel for the line with this index, found at these offsets.
  void Convert(std::size_t lineIndex, std::size_t source, std::size_t destination, bool isLast = false) {
    index = lineIndex;
    last = isLast;
    mSourceOffset = source;
    mDestinationOffset = destination;
    stage.kernel(*this);
  }

  const Stage& stage;
  const Call& call;
  const std::size_t pixels;
  const std::size_t sourceLineSize;
  const std::size_t stride;
  const bool full;  ///< whether samples keep all their bits
  std::size_t index = 0;
  bool last = false;              ///< a single line left over of lines that go in pairs
  std::vector<Color> demosaiced;  ///< all lines, of methods that make them at once

  /// Source bytes, counted from the start of the line; a line above has a negative offset.
  const std::uint8_t* Read(std::ptrdiff_t offset, std::size_t count) {
    return mSource.Read(mSourceOffset + static_cast<std::size_t>(offset), count);
  }
  unsigned Read8(std::ptrdiff_t offset) { return *Read(offset, 1); }
  unsigned Read16(std::ptrdiff_t offset) {
    const std::uint8_t* word = Read(offset, 2);
    return word[0] | unsigned{word[1]} << 8;
  }
  void WriteByte(std::size_t offset, unsigned value) { mDestination.Write(mDestinationOffset + offset, value); }

  /// The bits of samples: all, or their upper 8.
  unsigned Depth() const { return full ? stage.depth : 8; }
  /// The sample in a word; bits above it are dropped.
  unsigned Sample(unsigned word) const {
    return (word >> stage.shift & ((1u << stage.depth) - 1)) >> (stage.depth - Depth());
  }

  /// The same of a mosaic, in the table of its colour if samples are filtered first.
  unsigned MosaicSample(unsigned word, char color) const;

  /// Stores pixel i of the destination line `row` lines below, of samples of `Depth()` bits. Pixels past the end of the
  /// line never fall on a pixel of the picture.
  void StoreGray(std::size_t i, unsigned value) { Store(i, {value, value, value}, Depth()); }
  /// The same after the filter's lookup.
  void StoreFiltered(std::size_t i, Color color, std::size_t row = 0);
  /// The same of colours of a mosaic, whose samples may have been looked up before.
  void StoreDemosaiced(std::size_t i, Color color, std::size_t row = 0);

 private:
  bool IsInPicture(std::size_t offset) const;
  void Store(std::size_t i, Color color, unsigned depth, std::size_t row = 0);

  Bytes& mSource;
  Bytes& mDestination;
  std::size_t mSourceOffset = 0;
  std::size_t mDestinationOffset = 0;
};

}  // namespace model
