#pragma once

#include <gst/video/video.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "LmImagingLib/Image.h"
#include "colors.h"
#include "formats.h"
#include "settings.h"
#include "white_balance.h"

namespace LmGst {

/// Converts the frames of one format and size. All calls come from one thread.
class FrameConverter {
 public:
  /// Takes the formats of both pads. The gains of the white balance stay.
  void SetFormats(const SourceFormat& source, const TargetFormat& target, const YuvCode& code);
  /// Takes settings without a fault.
  void SetSettings(const Settings& settings);

  /// Whether frames of the same format on both pads stay as they are.
  bool ChangesNothing() const;
  /// Whether settings of colours are given that have no effect, because the source is gray.
  bool HasUnusedColors() const { return mSource.IsGray() && (mColors.Change() || mBalance != Balance::kOff); }

  /// Converts a frame.
  /// @return as `ConvertImage`
  LmImagingLib::ConversionResult Convert(const LmImagingLib::ConstImageView& frame, GstVideoFrame& picture);

  /// The gains in use.
  const LmTool::Triple& Gains() const;

 private:
  void FollowLight(const LmImagingLib::ConstImageView& frame);
  void MakeColors();
  LmImagingLib::ConversionResult Write(const LmImagingLib::ConstImageView& frame,
                                       const LmImagingLib::ImageView& picture) const;
  void EncodePlanes(GstVideoFrame& picture);

  SourceFormat mSource{};
  TargetFormat mTarget{};
  YuvCode mCode;

  LmTool::ColorArguments mColors;  // as they are set
  LmImagingLib::ConversionDepth mDepth = LmImagingLib::ConversionDepth::kFull;
  unsigned long mMethod = 0;
  unsigned mThreads = 1;
  Balance mBalance = Balance::kOff;

  WhiteBalanceFollower mFollower;
  std::optional<LmTool::Colors> mMade;  // of the settings and the gains in use; made when the next frame comes
  std::vector<std::uint8_t> mPlanes;    // red, green and blue, before they become YUV
  std::vector<std::uint8_t> mRoom;
};

}  // namespace LmGst
