#pragma once

#include "converters/demosaicer.h"
#include "walk/parted_rows.h"

namespace LmImagingLib {

/// Demosaics lines `first` to `end` of a frame, one at a time, by a method that reads parted rows.
template <class Sample>
class PartedDemosaicer {
 public:
  PartedDemosaicer(const MosaicSource& source, const Writer& writer, const Frame& frame, std::uint32_t first,
                   std::uint32_t end);

  void Convert();

 private:
  template <class Method>
  void ConvertBy(Method& method);
  bool StoresPixels() const;
  bool IsRedInLine(std::uint32_t line) const { return IsInRedRow(mShape.SiteOf(line)); }
  void Store(std::uint32_t line, const RowColors<Sample>& colors) const;

  const Writer& mWriter;
  const Frame& mFrame;
  const std::uint32_t mFirst, mEnd;
  const MosaicShape mShape;
  RowWindow<Sample> mSource;
  PartedRowWindow<Sample> mRows;
  const StripSteps<Sample> mSteps;
  const Fit mFit;
};

}  // namespace LmImagingLib
