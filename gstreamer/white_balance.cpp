// White balance from frame to frame.
#include "white_balance.h"

#include <algorithm>
#include <cmath>

namespace LmGst {

using namespace LmImagingLib;
using LmTool::Triple;

namespace {

constexpr double kEase = 0.15;  // of the way to the estimate in each frame
// Gains rest until they are this far from the estimate, and move until they are that near. New gains need new tables,
// and the noise of frames is less than that.
constexpr double kFar = 0.01, kNear = 0.002;

double Distance(const Triple& a, const Triple& b) {
  return std::max({std::abs(a.red / b.red - 1), std::abs(a.green / b.green - 1), std::abs(a.blue / b.blue - 1)});
}

// As `lmimaging convert --white-balance` prints gains.
double Kept(double gain) { return std::round(gain * 10000) / 10000; }

double Eased(double now, double target) { return Kept(now + kEase * (target - now)); }

}  // namespace

bool WhiteBalanceFollower::Follow(const ConstImageView& frame, unsigned long flags, const Triple& black,
                                  Balance balance) {
  WhiteBalanceOptions options;
  options.method = balance == Balance::kWhite ? WhiteBalanceOptions::kWhitePatch : WhiteBalanceOptions::kGrayWorld;
  options.flags = flags;
  options.black = {black.red, black.green, black.blue};
  const WhiteBalance found = EstimateWhiteBalance(frame, options);
  if (!found.IsFound()) return false;
  const Triple target{Kept(found.gains.red), Kept(found.gains.green), Kept(found.gains.blue)};
  if (!mIsFound) {
    mIsFound = true;
    mGains = target;
    return true;
  }
  mIsMoving = Distance(mGains, target) > (mIsMoving ? kNear : kFar);
  if (!mIsMoving) return false;
  mGains = {Eased(mGains.red, target.red), Eased(mGains.green, target.green), Eased(mGains.blue, target.blue)};
  return true;
}

}  // namespace LmGst
