// Brightness and differences of colour: Y of each pixel, Cb and Cr of two or four.
#include "yuv.h"

#include <algorithm>
#include <numeric>

namespace LmGst {

namespace {

// Pixels of a line that are encoded at a time; even.
constexpr std::size_t kStrip = 1024;

// A sum of red, green and blue by whole numbers, divided by a whole number. `offset` includes the half that rounds.
struct Fraction {
  std::int32_t red, green, blue, offset, divisor;

  constexpr std::uint8_t Of(std::int32_t r, std::int32_t g, std::int32_t b) const {
    const auto value =
        static_cast<std::uint32_t>(red * r + green * g + blue * b + offset) / static_cast<std::uint32_t>(divisor);
    return static_cast<std::uint8_t>(value < 255 ? value : 255);
  }
};

// `level` + `scale` (red r + green g + blue b) / (`one` * 255 * `pixels`), for sums over some pixels. The fraction is
// reduced, so that all of it is below 2^31.
constexpr Fraction Reduced(std::int64_t red, std::int64_t green, std::int64_t blue, std::int64_t scale,
                           std::int64_t one, std::int64_t pixels, std::int64_t level) {
  const std::int64_t common = std::gcd(scale, one * 255);
  const std::int64_t factor = scale / common;
  const std::int64_t divisor = one * 255 / common * pixels;
  const std::int64_t offset = level * divisor + divisor / 2;
  const std::int64_t most =
      (std::max(red, INT64_C(0)) + std::max(green, INT64_C(0)) + std::max(blue, INT64_C(0))) * factor * 255 * pixels +
      offset;
  return most >> 31 == 0 ? Fraction{static_cast<std::int32_t>(red * factor), static_cast<std::int32_t>(green * factor),
                                    static_cast<std::int32_t>(blue * factor), static_cast<std::int32_t>(offset),
                                    static_cast<std::int32_t>(divisor)}
                         : Fraction{};
}

// The equations of a code, for sums over `kPixels` pixels. Coefficients are ten-thousandths.
template <bool kBT709, bool kFull, int kPixels>
struct Equations {
  static constexpr std::int64_t kOne = 10000, kRed = kBT709 ? 2126 : 2990, kBlue = kBT709 ? 722 : 1140,
                                kGreen = kOne - kRed - kBlue;
  static constexpr std::int64_t kRange = kFull ? 255 : 219, kChroma = kFull ? 255 : 224;

  static constexpr Fraction kY = Reduced(kRed, kGreen, kBlue, kRange, kOne, kPixels, kFull ? 0 : 16);
  static constexpr Fraction kCb = Reduced(-kRed, -kGreen, kOne - kBlue, kChroma, 2 * (kOne - kBlue), kPixels, 128);
  static constexpr Fraction kCr = Reduced(kOne - kRed, -kGreen, -kBlue, kChroma, 2 * (kOne - kRed), kPixels, 128);
  static_assert(kY.divisor != 0 && kCb.divisor != 0 && kCr.divisor != 0, "the numbers exceed 32 bits");
};

// Two lines of a picture, which may be the same one, and where their results go.
struct Lines {
  const std::uint8_t *red[2], *green[2], *blue[2];
  std::uint8_t* luma[2];
  std::uint8_t *cb, *cr;
};

#define LM_INLINE [[gnu::always_inline]] inline

// Pairs of pixels of a line; of two lines, their four.
template <int kLines>
LM_INLINE void SumPairs(const std::uint8_t* const (&line)[2], std::size_t first, std::size_t pairs,
                        std::uint16_t* sums) {
  const std::uint8_t* const upper = line[0] + first;
  const std::uint8_t* const lower = line[1] + first;
  for (std::size_t i = 0; i < pairs; ++i) {
    unsigned sum = 0U + upper[2 * i] + upper[2 * i + 1];
    if (kLines == 2) sum += 0U + lower[2 * i] + lower[2 * i + 1];
    sums[i] = static_cast<std::uint16_t>(sum);
  }
}

template <int kLines>
LM_INLINE std::uint16_t LastSum(const std::uint8_t* const (&line)[2], std::size_t column) {
  return static_cast<std::uint16_t>(kLines == 2 ? 2 * (line[0][column] + line[1][column]) : 2 * line[0][column]);
}

// Encodes the Y of `kLines` lines, and the Cb and Cr of their pairs.
template <bool kBT709, bool kFull, int kLines>
LM_INLINE void EncodeLines(const Lines& lines, std::size_t width) {
  using OfOne = Equations<kBT709, kFull, 1>;
  using OfPairs = Equations<kBT709, kFull, 2 * kLines>;
  std::uint16_t red[kStrip / 2], green[kStrip / 2], blue[kStrip / 2];
  for (std::size_t first = 0; first < width; first += kStrip) {
    const std::size_t count = std::min(kStrip, width - first);
    for (int k = 0; k < kLines; ++k) {
      const std::uint8_t* const r = lines.red[k] + first;
      const std::uint8_t* const g = lines.green[k] + first;
      const std::uint8_t* const b = lines.blue[k] + first;
      std::uint8_t* const y = lines.luma[k] + first;
      for (std::size_t i = 0; i < count; ++i) y[i] = OfOne::kY.Of(r[i], g[i], b[i]);
    }
    std::size_t pairs = count / 2;
    SumPairs<kLines>(lines.red, first, pairs, red);
    SumPairs<kLines>(lines.green, first, pairs, green);
    SumPairs<kLines>(lines.blue, first, pairs, blue);
    if (count % 2 != 0) {
      red[pairs] = LastSum<kLines>(lines.red, width - 1);
      green[pairs] = LastSum<kLines>(lines.green, width - 1);
      blue[pairs++] = LastSum<kLines>(lines.blue, width - 1);
    }
    std::uint8_t* const cb = lines.cb + first / 2;
    std::uint8_t* const cr = lines.cr + first / 2;
    for (std::size_t i = 0; i < pairs; ++i) cb[i] = OfPairs::kCb.Of(red[i], green[i], blue[i]);
    for (std::size_t i = 0; i < pairs; ++i) cr[i] = OfPairs::kCr.Of(red[i], green[i], blue[i]);
  }
}

template <int kLines>
LM_INLINE void EncodeByCode(const Lines& lines, std::size_t width, const YuvCode& code) {
  if (code.isBT709) {
    if (code.isFullRange) {
      EncodeLines<true, true, kLines>(lines, width);
    } else {
      EncodeLines<true, false, kLines>(lines, width);
    }
  } else if (code.isFullRange) {
    EncodeLines<false, true, kLines>(lines, width);
  } else {
    EncodeLines<false, false, kLines>(lines, width);
  }
}

LM_INLINE void Interleave(const std::uint8_t* first, const std::uint8_t* second, std::size_t count, std::uint8_t* to) {
  for (std::size_t i = 0; i < count; ++i) {
    to[2 * i] = first[i];
    to[2 * i + 1] = second[i];
  }
}

// Encodes lines and stores them in their layout. Where that interleaves, `room` has Cb and Cr in turns before, and
// `interleaved` is the line that gets them.
using EncodeFunction = void(const Lines& lines, std::size_t width, const YuvCode& code, YuvLayout layout,
                            std::uint8_t* room, std::uint8_t* interleaved);

LM_INLINE void Encode(const Lines& lines, std::size_t width, const YuvCode& code, YuvLayout layout, std::uint8_t* room,
                      std::uint8_t* interleaved) {
  const std::size_t pairs = (width + 1) / 2;
  if (layout == YuvLayout::kYUY2) {
    EncodeByCode<1>(lines, width, code);
    if (width % 2 != 0) lines.luma[0][width] = lines.luma[0][width - 1];
    Interleave(lines.cb, lines.cr, pairs, room);
    Interleave(lines.luma[0], room, 2 * pairs, interleaved);
  } else {
    EncodeByCode<2>(lines, width, code);
    if (layout == YuvLayout::kNV12) Interleave(lines.cb, lines.cr, pairs, interleaved);
  }
}

void EncodePlain(const Lines& lines, std::size_t width, const YuvCode& code, YuvLayout layout, std::uint8_t* room,
                 std::uint8_t* interleaved) {
  Encode(lines, width, code, layout, room, interleaved);
}

#if defined(__x86_64__) && defined(__GNUC__)
[[gnu::target("avx2")]] void EncodeAVX2(const Lines& lines, std::size_t width, const YuvCode& code, YuvLayout layout,
                                        std::uint8_t* room, std::uint8_t* interleaved) {
  Encode(lines, width, code, layout, room, interleaved);
}

EncodeFunction* BestEncode() { return __builtin_cpu_supports("avx2") ? EncodeAVX2 : EncodePlain; }
#else
EncodeFunction* BestEncode() { return EncodePlain; }
#endif

}  // namespace

void EncodeYuv(const RgbPlanes& picture, std::size_t width, std::size_t height, const YuvCode& code,
               const YuvPlanes& result, std::vector<std::uint8_t>& room) {
  EncodeFunction* const encode = BestEncode();
  const std::size_t pairs = (width + 1) / 2;
  const bool isYUY2 = result.layout == YuvLayout::kYUY2;
  const bool isPlanar = result.layout == YuvLayout::kI420;
  room.resize(6 * pairs);  // Y, Cb, Cr, and the latter two in turns, of a line that is interleaved
  const std::size_t step = isYUY2 ? 1 : 2;
  for (std::size_t y = 0; y < height; y += step) {
    const std::size_t at[2] = {y, std::min(y + step - 1, height - 1)};
    Lines lines{};
    for (std::size_t k = 0; k < 2; ++k) {
      const std::size_t offset = at[k] * picture.lineSize;
      lines.red[k] = picture.red + offset;
      lines.green[k] = picture.green + offset;
      lines.blue[k] = picture.blue + offset;
      lines.luma[k] = isYUY2 ? room.data() : result.plane[0] + at[k] * result.lineSize[0];
    }
    lines.cb = isPlanar ? result.plane[1] + y / 2 * result.lineSize[1] : room.data() + 2 * pairs;
    lines.cr = isPlanar ? result.plane[2] + y / 2 * result.lineSize[2] : room.data() + 3 * pairs;
    std::uint8_t* const interleaved =
        isYUY2 ? result.plane[0] + y * result.lineSize[0] : result.plane[1] + y / 2 * result.lineSize[1];
    encode(lines, width, code, result.layout, room.data() + 4 * pairs, interleaved);
  }
}

}  // namespace LmGst
