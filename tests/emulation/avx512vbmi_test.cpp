#include "emulation/avx512vbmi.h"

#include <gtest/gtest.h>

#include <csignal>

namespace LmImagingLib {
namespace {

// The results of the emulation are tested by every other test, since scripts/test-avx512vbmi runs them on it.
TEST(Avx512VbmiEmulation, LeavesOtherSignalsToEndTheProcess) {
  const Avx512VbmiEmulation emulation;
  EXPECT_EXIT(__asm__("ud2"), testing::KilledBySignal(SIGILL), "");
  EXPECT_EXIT(std::raise(SIGILL), testing::KilledBySignal(SIGILL), "");
  // VPERMB with a broadcast, which it does not have.
  EXPECT_EXIT(__asm__(".byte 0x62, 0xF2, 0x7D, 0x58, 0x8D, 0x00"), testing::KilledBySignal(SIGILL), "");
}

}  // namespace
}  // namespace LmImagingLib
