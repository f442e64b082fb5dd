// PGM and PPM: "P5" or "P6", width, height and greatest value as text, then rows of samples, words high byte first.
#include "pnm.h"

#include <cctype>
#include <stdexcept>

namespace LmTool {

namespace {

constexpr std::size_t kMostValue = 65535;

Bytes Encode(const Picture& picture, std::size_t channels) {
  const std::string header = (channels == 1 ? "P5\n" : "P6\n") + std::to_string(picture.size.width) + " " +
                             std::to_string(picture.size.height) + (picture.bits == 16 ? "\n65535\n" : "\n255\n");
  const std::size_t sampleBytes = picture.SampleBytes();
  Bytes file(header.begin(), header.end());
  file.reserve(file.size() + picture.size.Pixels() * channels * sampleBytes);
  const std::uint8_t* pixel = picture.pixels.data();
  for (std::size_t i = 0; i < picture.size.Pixels(); ++i, pixel += picture.Channels() * sampleBytes) {
    for (std::size_t channel = 0; channel < channels; ++channel) {
      const std::uint8_t* const sample = pixel + (picture.gray ? 0 : 2 - channel) * sampleBytes;
      for (std::size_t byte = sampleBytes; byte-- > 0;) file.push_back(sample[byte]);
    }
  }
  return file;
}

class Header {
 public:
  explicit Header(const Bytes& file) : mFile(file) {}

  // The next number, after white space and comments.
  std::size_t Number(const char* name, std::size_t most) {
    while (mAt < mFile.size() && (std::isspace(mFile[mAt]) != 0 || mFile[mAt] == '#')) {
      if (mFile[mAt] == '#') {
        while (mAt < mFile.size() && mFile[mAt] != '\n') ++mAt;
      } else {
        ++mAt;
      }
    }
    const std::size_t begin = mAt;
    std::size_t value = 0;
    for (; mAt < mFile.size() && std::isdigit(mFile[mAt]) != 0 && value <= most; ++mAt) {
      value = value * 10 + (mFile[mAt] - '0');
    }
    if (mAt == begin || value < 1 || value > most) {
      throw std::runtime_error(std::string("its header has no ") + name + "; allowed: 1 to " + std::to_string(most));
    }
    return value;
  }

  // Where the samples begin: after a single white space.
  std::size_t End() const {
    if (mAt >= mFile.size() || std::isspace(mFile[mAt]) == 0) throw std::runtime_error("its header does not end");
    return mAt + 1;
  }

 private:
  const Bytes& mFile;
  std::size_t mAt = 2;
};

// Samples of a file on the scale of a picture.
class Scale {
 public:
  explicit Scale(std::size_t most) : mMost(most), mBits(most > 255 ? 16 : 8) {
    const bool isPower = (most & (most + 1)) == 0;
    while (isPower && mBits == 16 && most << (mShift + 1) <= kMostValue) ++mShift;
    mIsShift = isPower && mBits == 16;
  }

  unsigned Bits() const { return mBits; }

  std::size_t Of(std::size_t sample) const {
    if (sample > mMost) {
      throw std::runtime_error("it has a sample of " + std::to_string(sample) + "; its header allows 0 to " +
                               std::to_string(mMost));
    }
    if (mIsShift) return sample << mShift;
    return (sample * ((std::size_t{1} << mBits) - 1) + mMost / 2) / mMost;
  }

 private:
  std::size_t mMost;
  unsigned mBits;
  unsigned mShift = 0;
  bool mIsShift = false;
};

}  // namespace

Bytes EncodePgm(const Picture& picture) { return Encode(picture, 1); }

Bytes EncodePpm(const Picture& picture) { return Encode(picture, 3); }

Picture DecodePnm(const Bytes& file) {
  if (file.size() < 2 || file[0] != 'P' || (file[1] != '5' && file[1] != '6')) {
    throw std::runtime_error("it begins neither with P5 nor with P6; allowed: binary PGM and PPM files");
  }
  Header header(file);
  Picture picture{{}, file[1] == '5', 8, {}};
  picture.size.width = header.Number("width", kMostLines);
  picture.size.height = header.Number("height", kMostLines);
  const Scale scale(header.Number("greatest value", kMostValue));
  picture.bits = scale.Bits();
  if (!IsAllowed(picture.size))
    throw std::runtime_error("it is " + picture.size.Text() + "; allowed: " + AllowedSizes());
  const std::size_t begin = header.End();
  const std::size_t bytes = picture.RowBytes() * picture.size.height;
  if (file.size() - begin < bytes) {
    throw std::runtime_error("it has " + std::to_string(file.size() - begin) + " bytes of pixels, and needs " +
                             std::to_string(bytes));
  }
  picture.pixels.resize(bytes);
  const std::size_t sampleBytes = picture.SampleBytes();
  for (std::size_t i = 0; i < bytes / sampleBytes; ++i) {
    const std::uint8_t* const in = &file[begin + i * sampleBytes];
    const std::size_t value = scale.Of(sampleBytes == 1 ? in[0] : in[0] * 256U + in[1]);
    const std::size_t place = picture.gray ? i : i / 3 * 3 + 2 - i % 3;
    for (std::size_t byte = 0; byte < sampleBytes; ++byte) {
      picture.pixels[place * sampleBytes + byte] = static_cast<std::uint8_t>(value >> (8 * byte));
    }
  }
  return picture;
}

}  // namespace LmTool
