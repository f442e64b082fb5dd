#pragma once

#include <cstddef>
#include <cstdint>

#include "LmImagingLib/PixelTypeID.h"

namespace LmImagingLib {

class DevelopSteps;
class RGBFilter;

/// The planes of an image of a type.
constexpr std::uint32_t PlaneCount(const PixelTypeID& type) { return (type & kPlanarFlag) != 0 ? 3 : 1; }

/// One conversion of an image: the places of its lines, and how to convert them.
struct Frame {
  const std::uint8_t* source = nullptr;  ///< the line `sourceFirst`; of an interlaced image always its beginning
  std::size_t sourceLine = 0;            ///< bytes from a line to the next
  std::uint32_t sourceFirst = 0;         ///< counted in the image
  std::uint32_t sourceWidth = 0;         ///< pixels of a line
  std::uint32_t sourceHeight = 0;        ///< lines of the image; a plane has so many
  bool interlaced = false;               ///< whether the image has two fields, one after the other
  std::size_t secondField = 0;           ///< the bytes from its beginning to the second one
  std::uint32_t fieldLines = 0;          ///< lines of both; one after them belongs to neither

  std::uint8_t* destination = nullptr;  ///< the line `destinationFirst`
  std::size_t destinationLine = 0;      ///< bytes from a line to the next
  std::uint32_t destinationFirst = 0;
  std::uint32_t destinationHeight = 0;  ///< lines of a plane

  std::uint32_t sourcePlanes = 1;             ///< 1, or one for each colour
  std::uint32_t destinationPlanes = 1;        ///< likewise
  std::uint32_t pixels = 0;                   ///< to convert in each line
  std::uint32_t flags = 0;                    ///< bits of `ConversionFlags`
  const RGBFilter* filter = nullptr;          ///< null for the identity
  const DevelopSteps* development = nullptr;  ///< the steps in place of a filter; null of conversions
  bool contained = false;  ///< whether lines are converted without touching a byte after their end; see `WholeGroups`
  bool streams = false;    ///< whether to store past the caches
  std::uint32_t fetchAhead = 0;       ///< bytes ahead of which kernels fetch lines; 0 leaves it to the processor
  std::uint32_t fetchMovesAhead = 0;  ///< the same of kernels that only move bytes

  std::size_t SourcePlane() const { return sourceLine * sourceHeight; }
  std::size_t DestinationPlane() const { return destinationLine * destinationHeight; }
};

/// A line of a frame, or the first one of a step of lines.
struct FrameLine {
  const std::uint8_t* source;
  std::uint8_t* destination;
  std::uint32_t index;  ///< counted in the image
};

/// The conversion that runs in a thread, for converters of applications, which hand lines to the library's own.
struct ThreadState {
  const Frame* frame = nullptr;       ///< of the innermost conversion; null outside of one
  std::uint32_t line = 0;             ///< that it is converting
  const RGBFilter* filter = nullptr;  ///< for the next conversion that begins
};
ThreadState& CurrentThread();

/// Makes a frame the thread's, for the length of a scope.
class FrameScope {
 public:
  explicit FrameScope(const Frame& frame) : mThread(CurrentThread()), mOuter(mThread) { mThread.frame = &frame; }
  ~FrameScope() {
    mThread.frame = mOuter.frame;
    mThread.line = mOuter.line;
  }
  FrameScope(const FrameScope&) = delete;
  FrameScope& operator=(const FrameScope&) = delete;

  void SetLine(std::uint32_t line) { mThread.line = line; }

 private:
  ThreadState& mThread;
  const ThreadState mOuter;
};

/// Makes a filter the one of the next conversion that begins in the thread, for the length of a scope.
class FilterScope {
 public:
  explicit FilterScope(const RGBFilter* filter) : mThread(CurrentThread()), mOuter(mThread.filter) {
    mThread.filter = filter;
  }
  ~FilterScope() { mThread.filter = mOuter; }
  FilterScope(const FilterScope&) = delete;
  FilterScope& operator=(const FilterScope&) = delete;

 private:
  ThreadState& mThread;
  const RGBFilter* const mOuter;
};

}  // namespace LmImagingLib
