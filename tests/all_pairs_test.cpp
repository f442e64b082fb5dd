#include <gtest/gtest.h>
#include <unistd.h>

#include <csignal>
#include <cstring>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/PixelTypeFactory.h"
#include "model/frame.h"
#include "model/guarded_buffer.h"
#include "model/registered.h"
#include "simd/each_set.h"

// Every registered pair against the plain model: whole buffers, between inaccessible pages.

namespace LmImagingLib {
namespace {

using model::Filters;
using model::Frame;
using model::Random;

std::set<model::Pair> RegisteredPairs() {
  std::set<model::Pair> pairs;
  PixelTypeID from = 0;
  PixelTypeID to = 0;
  for (unsigned long i = 0; PixelTypeFactory::EnumConverters(i, from, to); ++i) {
    if (from >> 32 == 0 && to >> 32 == 0) pairs.emplace(from, to);  // high bits mark the types of other tests
  }
  return pairs;
}

std::vector<model::Pair> Missing(const std::set<model::Pair>& from, const std::set<model::Pair>& in) {
  std::vector<model::Pair> pairs;
  std::set_difference(in.begin(), in.end(), from.begin(), from.end(), std::back_inserter(pairs));
  return pairs;
}

/// Reports the conversion that ran when a byte too many was touched, or a buffer released that is not the library's.
class FaultReporter {
 public:
  FaultReporter() {
    for (std::size_t i = 0; i < std::size(kSignals); ++i) mPrevious[i] = std::signal(kSignals[i], Report);
  }
  ~FaultReporter() {
    for (std::size_t i = 0; i < std::size(kSignals); ++i) std::signal(kSignals[i], mPrevious[i]);
  }

  static void SetRunning(const std::string& what) { std::strncpy(sRunning, what.c_str(), sizeof sRunning - 1); }

 private:
  static constexpr int kSignals[] = {SIGSEGV, SIGABRT};

  static void Report(int signal) {
    for (const char* const text : std::initializer_list<const char*>{"\nfault in the conversion ", sRunning, "\n"}) {
      if (write(STDERR_FILENO, text, std::strlen(text)) < 0) break;
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
  }

  static char sRunning[512];
  void (*mPrevious[std::size(kSignals)])(int);
};
char FaultReporter::sRunning[512];

model::Call MakeCall(model::Id from, std::uint32_t width, const Filters& filters, Random& random) {
  model::Call call{};
  call.pixelsPerLine = width;
  call.lines = random() % 7;
  call.sourceWidth = width + model::OneOf(random, {0, 0, 0, 1, 3});
  call.sourceHeight = call.lines + model::OneOf(random, {0, 0, 1, 2});
  call.destinationWidth = width + model::OneOf(random, {0, 0, 0, 1, 6});
  call.destinationHeight = call.lines + model::OneOf(random, {0, 0, 1});
  call.padding = model::OneOf(random, {0, 0, 1, 2, 7, 64});
  call.flags = model::OneOf(random, {0, 0x10, 0x20, 0x40, 0x80, 0xC0}) | model::OneOf(random, {0, 0, 0x100}) |
               model::OneOf(random, {0, 0, 0, 0x200, 0x400, 0x600}) | model::OneOf(random, {0, 0x1000}) |
               model::OneOf(random, {0, 1}) | model::OneOf(random, {0, 0x800}) | model::OneOf(random, {0, 0, 0x2000}) |
               model::OneOf(random, {0, 0x4000, 0x8000, 0xC000});
  call.filter = filters.Pick(random);
  if (model::SourceOf(from).family == model::Family::BAYER && random() % 6 == 0) {
    call.flags |= 0x10000;
    call.sourceWidth += width;
    call.sourceHeight += call.lines;
  }
  return call;
}

class AllPairs : public testing::Test {
 protected:
  /// Where the intermediate image of a chain is: in the test's own buffer, in one that the call is to make, or in the
  /// converter's own. Pixels that a first stage leaves out show the bytes that were there before.
  enum class Scratch { OURS, NONE_YET, THE_CONVERTERS };
  static Scratch PickScratch(Random& random) {
    return random() % 2 == 0 ? Scratch::OURS : random() % 4 == 0 ? Scratch::NONE_YET : Scratch::THE_CONVERTERS;
  }
  static std::uint8_t Before(Scratch scratch) { return scratch == Scratch::OURS ? 0xA5 : 0; }

  /// Converts the frame between inaccessible pages and compares all that may have changed.
  bool Check(const Frame& frame, Scratch kind, Random& random) {
    const PixelConverter* converter = PixelTypeFactory::FindConverter(frame.from, frame.to);
    const ConversionExtent extent = FindConversionExtent(*converter, model::GeometryOf(frame.call)).value();
    EXPECT_EQ(extent.source, frame.source.size()) << frame.Describe();
    EXPECT_EQ(extent.destination, frame.expected.size()) << frame.Describe();
    if (HasFailure()) return false;
    const auto side = random() % 4 == 0 ? GuardedBuffer::Against::BEGIN : GuardedBuffer::Against::END;
    std::uint8_t* source = Fill(mSource, frame.source, side);
    std::uint8_t* destination = Fill(mDestination, frame.untouched, side);
    void* scratch =
        kind == Scratch::OURS ? Fill(mIntermediate, frame.intermediate, GuardedBuffer::Against::END) : nullptr;
    unsigned long scratchSize = kind == Scratch::OURS ? frame.intermediateSize : 0;

    FaultReporter::SetRunning(frame.Describe());
    const auto result = model::ConvertWithLibrary(*converter, frame.call, mFilters.FilterOf(frame.call.filter), source,
                                                  destination, kind == Scratch::THE_CONVERTERS ? nullptr : &scratch,
                                                  kind == Scratch::THE_CONVERTERS ? nullptr : &scratchSize);
    EXPECT_EQ(result.GetCode(), 0) << frame.Describe();
    if (kind == Scratch::NONE_YET) {
      EXPECT_EQ(scratchSize, frame.intermediateSize) << frame.Describe();
      delete[] static_cast<unsigned char*>(scratch);
    }

    std::vector<std::uint8_t> expected = frame.expected;
    if (side == GuardedBuffer::Against::BEGIN) {
      expected.resize(std::min(mDestination.Capacity(), expected.size() + kSlack), kBlank);
    }
    const std::size_t at = model::FirstDifference(destination, expected);
    if (at == expected.size()) return true;
    ADD_FAILURE() << frame.Describe() << ": byte " << at << " of " << frame.expected.size() << " is "
                  << unsigned{destination[at]} << ", expected " << unsigned{expected[at]};
    return false;
  }

  Random mRandom{20061};
  Filters mFilters{mRandom};

 private:
  static constexpr std::size_t kSlack = 256;
  static constexpr std::uint8_t kBlank = 0x3C;

  static std::uint8_t* Fill(const GuardedBuffer& buffer, const std::vector<std::uint8_t>& content,
                            GuardedBuffer::Against side) {
    std::uint8_t* begin = buffer.Place(content.size(), side);
    std::copy(content.begin(), content.end(), begin);
    if (side == GuardedBuffer::Against::BEGIN) {
      std::fill_n(begin + content.size(), std::min(buffer.Capacity() - content.size(), kSlack), kBlank);
    }
    return begin;
  }

  FaultReporter mReporter;
  GuardedBuffer mSource{1 << 18};
  GuardedBuffer mDestination{1 << 18};
  GuardedBuffer mIntermediate{1 << 18};
};

TEST_F(AllPairs, AreTheOnesOfTheTable) {
  const auto expectTheTable = [](model::Registered registered) {
    const std::set<model::Pair> actual = RegisteredPairs();
    const std::set<model::Pair> expected = model::AllPairs(registered);
    EXPECT_EQ(Missing(actual, expected), std::vector<model::Pair>{}) << "not registered";
    EXPECT_EQ(Missing(expected, actual), std::vector<model::Pair>{}) << "not in the table";
  };
  expectTheTable(model::RegisteredNow());
  EXPECT_EQ(model::AllPairs(model::Registered::STANDARD).size(), 155u + 2364u);
  // Pairs have the same pixels before the extended formats are there, and after; of those, the tests below say more.
  for (const auto& [from, to] : RegisteredPairs()) {
    const model::Call call = MakeCall(from, 50, mFilters, mRandom);
    Check(model::MakeFrame(from, to, call, mRandom, Before(Scratch::OURS)), Scratch::OURS, mRandom);
  }
  ASSERT_TRUE(RegisterExtendedFormats().IsOK());
  expectTheTable(model::Registered::EXTENDED);
}

/// All pairs with one of the instruction sets that the processor has.
class AllPairsWith : public AllPairs, public testing::WithParamInterface<std::size_t> {
 protected:
  AllPairsWith() { RegisterExtendedFormats(); }

 private:
  const ForcedInstructionSet mForced{GetParam()};
};

INSTANTIATE_TEST_SUITE_P(InstructionSets, AllPairsWith, testing::ValuesIn(InstructionSetsHere()),
                         [](const auto& set) { return InstructionSetName(set.param); });

// Around the vector widths of all instruction sets, and around the 2048 pixels that strips have, of two taps and of
// one.
TEST_P(AllPairsWith, ConvertLikeTheModel) {
  const std::uint32_t widths[] = {0,  1,   2,   3,   4,   5,   6,   7,    8,    9,    15,   16,
                                  17, 31,  32,  33,  47,  48,  63,  64,   65,   66,   95,   96,
                                  97, 127, 128, 129, 130, 255, 257, 2047, 2048, 2049, 2050, 4099};
  // A pair takes a third of the widths; the pairs that share its decoder or its writer take the others.
  std::size_t third = GetParam();
  for (const auto& [from, to] : RegisteredPairs()) {
    for (std::size_t i = ++third % 3; i < std::size(widths); i += 3) {
      const std::uint32_t width = widths[i];
      const Scratch scratch = PickScratch(mRandom);
      const model::Call call = MakeCall(from, width, mFilters, mRandom);
      if (!Check(model::MakeFrame(from, to, call, mRandom, Before(scratch)), scratch, mRandom)) break;  // one a pair
    }
  }
}

}  // namespace
}  // namespace LmImagingLib
