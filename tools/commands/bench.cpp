#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <chrono>
#include <cstring>
#include <fstream>
#include <iomanip>
#include <iostream>
#include <memory>
#include <random>

#include "LmImagingLib/PixelConverter.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "LmImagingLib/RGBFilter.h"
#include "commands/commands.h"
#include "frame.h"
#include "options.h"

namespace LmTool {

using namespace LmImagingLib;

namespace {

struct BenchPair {
  const char* name;
  PixelTypeID from, to;
  unsigned long flags;
  bool balanced;
};

constexpr unsigned long kBlock = ConversionFlags::kBayerRG;
constexpr unsigned long kBilinear = ConversionFlags::kBayerRG | ConversionFlags::kBilinear;

constexpr BenchPair kBenchPairs[] = {
    {"Grayscale8 to RGB24", 0x10001, 0x420002, 0, false},
    {"Grayscale12, packed, to RGB24", 0x410003, 0x420002, 0, false},
    {"RGB24 to BGR24", 0x420002, 0x420006, 0, false},
    {"RGB24 to BGR24, white balance", 0x420002, 0x420006, 0, true},
    {"YUV 4:2:2 to RGB24", 0x40001, 0x420002, 0, false},
    {"YUV 4:2:2 to RGB24, white balance", 0x40001, 0x420002, 0, true},
    {"Bayer 8 to RGB24, block", 0x20010, 0x420002, kBlock, false},
    {"Bayer 8 to RGB24, bilinear", 0x20010, 0x420002, kBilinear, false},
    {"Bayer 8 to RGB24, bilinear, white balance", 0x20010, 0x420002, kBilinear, true},
    {"Bayer 12 to RGB24, bilinear", 0x20012, 0x420002, kBilinear, false},
};

constexpr std::size_t kRounds = 5;
constexpr double kRoundNanoseconds = 2e7;

std::string ProcessorName() {
  std::ifstream info("/proc/cpuinfo");
  for (std::string line; std::getline(info, line);) {
    if (line.rfind("model name", 0) == 0) return line.substr(line.find(':') + 2);
  }
  return "unknown";
}

template <class Work>
double NanosecondsOf(std::size_t times, const Work& work) {
  const auto begin = std::chrono::steady_clock::now();
  for (std::size_t i = 0; i < times; ++i) work();
  return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - begin).count() /
         static_cast<double>(times);
}

double MedianOf(std::array<double, kRounds> values) {
  std::sort(values.begin(), values.end());
  return values[kRounds / 2];
}

// Flat pictures would flatter.
Bytes Noise(std::size_t bytes) {
  std::mt19937 random;
  Bytes noise(bytes);
  for (std::uint8_t& byte : noise) byte = static_cast<std::uint8_t>(random());
  return noise;
}

void Measure(const BenchPair& conversion, const ImageSize& size) {
  const PixelConverter& converter = *PixelTypeFactory::FindConverter(conversion.from, conversion.to);
  const std::size_t read = SourceLayout(conversion.from, size).Bytes();
  const std::size_t written = DestinationLayout(converter, size).Bytes();
  const Bytes source = Noise(std::max(read, written) + kSlackBytes);
  Bytes destination(source.size());
  RGBFilter whiteBalance(8);
  whiteBalance.SetMultipliers(1.6, 1.0, 1.09);

  const auto convert = [&] {
    converter.Convert(conversion.balanced ? &whiteBalance : nullptr, source.data(), size.width, size.height,
                      destination.data(), size.width, size.height, size.width, size.height, conversion.flags, 0,
                      nullptr, nullptr);
  };
  const auto copy = [&] { std::memcpy(destination.data(), source.data(), (read + written) / 2); };

  convert();  // so that the estimate finds the memory mapped
  const auto times = static_cast<std::size_t>(kRoundNanoseconds / NanosecondsOf(1, convert)) + 1;
  std::array<double, kRounds> conversions{};
  std::array<double, kRounds> copies{};
  for (std::size_t round = 0; round < kRounds; ++round) {
    conversions[round] = NanosecondsOf(times, convert);
    copies[round] = NanosecondsOf(times, copy);
  }
  const auto pixels = static_cast<double>(size.Pixels());
  const double ours = MedianOf(conversions);
  const double limit = MedianOf(copies);
  std::cout << std::left << std::setw(43) << conversion.name << std::right << std::fixed << std::setprecision(3)
            << std::setw(9) << ours / pixels << std::setprecision(1) << std::setw(9)
            << static_cast<double>(read + written) / ours << std::setprecision(3) << std::setw(15) << limit / pixels
            << std::setprecision(2) << std::setw(13) << ours / limit << std::endl;
}

void Run(const ImageSize& size) {
  std::cout << "Processor: " << ProcessorName() << "\nFrames of noise, " << size.Text()
            << ", one thread; the copy moves as many bytes as the conversion reads and writes\n\n"
            << std::left << std::setw(43) << "conversion" << std::right << std::setw(9) << "ns/pixel" << std::setw(9)
            << "GB/s" << std::setw(15) << "copy ns/pixel" << std::setw(13) << "ours / copy" << '\n';
  for (const BenchPair& conversion : kBenchPairs) Measure(conversion, size);
}

}  // namespace

void AddBenchCommand(CLI::App& app) {
  CLI::App* const command = app.add_subcommand("bench", "Measure conversions on this machine, for a few seconds");
  const auto size = std::make_shared<ImageSize>(ImageSize{1920, 1080});
  AddSizeOption(*command, *size, "Width and height in pixels (default: 1920x1080)");
  command->callback([size] { Run(*size); });
}

}  // namespace LmTool
