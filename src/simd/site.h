#pragma once

#include <cstdint>

namespace LmImagingLib {

// Functions are static, so that the code of one instruction set is never linked into another's.

/// Which sample of a Bayer mosaic is at a position. It says as well which 2 x 2 samples begin there.
enum class Site : std::uint32_t {
  kGreenInRedRow,   ///< G R / B G
  kGreenInBlueRow,  ///< G B / R G
  kRed,             ///< R G / G B
  kBlue,            ///< B G / G R
};

static constexpr bool IsGreen(Site site) { return site < Site::kRed; }
static constexpr bool IsInRedRow(Site site) { return site == Site::kGreenInRedRow || site == Site::kRed; }

/// The site next to one; the one on the left is the same.
static constexpr Site RightOf(Site site) { return static_cast<Site>(static_cast<std::uint32_t>(site) ^ 2U); }
/// The site below one; the one above is the same.
static constexpr Site Below(Site site) { return static_cast<Site>(static_cast<std::uint32_t>(site) ^ 3U); }
/// The site so many rows below one, or above it.
template <class Integer>
static constexpr Site Below(Site site, Integer rows) {
  return rows % 2 != 0 ? Below(site) : site;
}

/// The site that becomes this one where red and blue are exchanged if need be: green in a red row, or red.
static constexpr Site AsInRedRow(Site site) { return IsGreen(site) ? Site::kGreenInRedRow : Site::kRed; }

}  // namespace LmImagingLib
