#pragma once

#include "LmImagingLib/WhiteBalance.h"
#include "colors.h"
#include "settings.h"

namespace LmGst {

/// Gains that follow the light: those of the first frame at once, later ones a little at a time, so that no single
/// frame makes the picture flicker.
class WhiteBalanceFollower {
 public:
  /// Begins anew with the next frame.
  void Restart() { mIsFound = false; }

  /// Looks at a frame. One that is too dark or overexposed leaves the gains as they are.
  /// @return whether the gains changed
  bool Follow(const LmImagingLib::ConstImageView& frame, unsigned long flags, const LmTool::Triple& black,
              Balance balance);

  const LmTool::Triple& Gains() const { return mGains; }
  bool IsFound() const { return mIsFound; }

 private:
  LmTool::Triple mGains{1, 1, 1};
  bool mIsFound = false;
  bool mIsMoving = false;
};

}  // namespace LmGst
