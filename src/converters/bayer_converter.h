#pragma once

#include "LmImagingLib/PixelConverter.h"
#include "converters/writers.h"
#include "walk/strips.h"

namespace LmImagingLib {

struct ConversionContext;
struct MosaicShortcut;

/// A mosaic's samples.
struct BayerSource {
  Twins<DecodeKernel> block;
  std::uint32_t sampleBytes;
};

/// Turns a colour mosaic into colour, two lines at a time.
///
/// The layout of the mosaic and the method come with the flags of the conversion. The bilinear method leaves the first
/// and the last pair of lines to the block method. A class that derives from this one may replace either method.
class BayerConverter : public PixelConverter {
 public:
  BayerConverter(const BayerSource& source, const Writer& writer, const PixelTypeID& from, const PixelTypeID& to,
                 unsigned long shift);

  unsigned long GetLinesPerStep() const override;
  /// Converts the last line of an image of odd height from the cells that it makes with the line above.
  /// @return `NOT_IMPLEMENTED` where no line lies above
  LmBaseLib::Result ConvertLastLine(const void* source, void* destination, unsigned long pixelCount) const override;
  LmBaseLib::Result ConvertLine(const void* source, void* destination, unsigned long pixelCount) const override;

  /// The block method: each 2 x 2 cell makes four equal pixels. The last column of an odd line repeats the colour of
  /// the cell that ends with it. A line of one pixel has no cell and stays.
  virtual LmBaseLib::Result DemosaicBlock(const void* source, void* destination, unsigned long pixelCount) const;
  /// The bilinear method: each pixel from its 3 x 3 neighbourhood. The outer columns are made by the block method's
  /// rule from the cell that starts the line, and from those that end with the pixel.
  virtual LmBaseLib::Result DemosaicBilinear(const void* source, void* destination, unsigned long pixelCount) const;

 private:
  class Mosaic;
  struct Rows;
  struct StepTargets;

  /// The shortcut for pixels from one of cell code `cell` on, or null where strips are due.
  const MosaicShortcut* ShortcutFor(const StripSteps& steps, const StepTargets& targets, std::uint32_t cell) const;
  const Twins<DirectKernel>& BlockOf(const MosaicShortcut& shortcut) const;
  void ConvertInterior(const StripSteps& steps, std::uint32_t cell, const Rows& rows, const StepTargets& targets,
                       std::size_t count) const;

  const BayerSource& mSource;
  const Writer& mWriter;
  const MosaicShortcut* mShortcut;
  std::uint32_t mSampleShift;
};

LM_DECLARE_KERNEL(DecodeKernel, BayerBlock8)
LM_DECLARE_KERNEL(DecodeKernel, BayerBlock16)

inline constexpr BayerSource kBayer8{kBayerBlock8, 1};
inline constexpr BayerSource kBayer16{kBayerBlock16, 2};

/// A Bayer converter as a class of its sample type, `unsigned char` or `unsigned short`, and writer.
template <class Sample, class Output>
class BayerTo : public BayerConverter {
 public:
  BayerTo(const PixelTypeID& from, const PixelTypeID& to, unsigned long shift)
      : BayerConverter(sizeof(Sample) == 1 ? kBayer8 : kBayer16, Output::kWriter, from, to, shift) {}
};

}  // namespace LmImagingLib
