#include "pixels.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

namespace LmImagingLib::Bench {

namespace {

using Samples = std::vector<int>;

Samples SamplesOf(const std::uint8_t* bytes, std::size_t count, int sampleBytes) {
  Samples samples(count);
  for (std::size_t i = 0; i < count; ++i) {
    samples[i] = sampleBytes == 1 ? bytes[i] : bytes[2 * i] | bytes[2 * i + 1] << 8;
  }
  return samples;
}

// A fourth channel is not compared, nor are edges of mosaics, which everybody treats differently. Bilinear greens of
// green pixels are not, because ours are smoothed, nor is gray that is made of them.
bool Compared(const PeerCase& job, std::size_t at, std::size_t channels, const ImageSize& size) {
  if (at % channels == 3) return false;
  if ((job.flags & ConversionFlags::kBayerRG) == 0) return true;
  const std::size_t x = at / channels % size.width, y = at / channels / size.width;
  if (x < 2 || y < 2 || x + 2 >= size.width || y + 2 >= size.height) return false;
  const bool smoothed = (job.flags & ConversionFlags::kBilinear) != 0 && (x + y) % 2 == 1;
  return !smoothed || (channels > 1 && at % channels != 1);
}

}  // namespace

void LimitNoise(Noise noise, FrameRing& frames) {
  if (noise == Noise::kAny) return;
  const PageBuffer& buffer = frames.Sources();
  std::uint8_t* const bytes = buffer.Data();
  for (std::size_t i = 0; i + 1 < buffer.Size(); i += 2) {
    if (noise == Noise::kTwelveBits) bytes[i + 1] &= 0x0F;
    if (noise == Noise::kStudio) bytes[i] |= 0x10, bytes[i + 1] |= 0x10;
  }
}

bool SamePixels(const PeerCase& job, const std::vector<Contestant>& contestants, const FrameRing& frames,
                const ImageSize& size) {
  const Image image = ImageOf(frames, size);
  const std::size_t count = frames.DestinationBytes() / static_cast<std::size_t>(job.sampleBytes);
  const std::size_t channels = count / size.Pixels();
  contestants[0].convert(image);
  const Samples ours = SamplesOf(image.destination, count, job.sampleBytes);
  bool same = true;
  for (std::size_t i = 1; i < contestants.size(); ++i) {
    std::memset(image.destination, 0x55, frames.DestinationBytes());
    contestants[i].convert(image);
    const Samples theirs = SamplesOf(image.destination, count, job.sampleBytes);
    for (std::size_t at = 0; at < count; ++at) {
      if (std::abs(theirs[at] - ours[at]) <= job.tolerance || !Compared(job, at, channels, size)) continue;
      std::fprintf(stderr, "%s, %s: value %zu is %d, and ours is %d\n", job.name, contestants[i].library.c_str(), at,
                   theirs[at], ours[at]);
      same = false;
      break;
    }
  }
  return same;
}

}  // namespace LmImagingLib::Bench
