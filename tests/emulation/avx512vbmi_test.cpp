#include "emulation/avx512vbmi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <optional>
#include <random>

// Forms of each instruction, by the assembler's own encoding: 16 bytes each, in the order of the loops below.
__asm__(R"asm(
.section .rodata
.balign 64
kLmVbmiMemory:
.set noise, 1
.rept 1024
  .set noise, (noise * 1103515245 + 12345) & 0x7FFFFFFF
  .byte noise >> 16 & 255
.endr
kLmVbmiInitial:
.zero 576

.text
.macro LmVbmiForm operation, v, last
  .irp registers, "%\v\()9, %\v\()30", "%\v\()28, %\v\()3", "%\v\()12, %\v\()12"
    .irp mask, "", "{%k3}", "{%k5}{z}"
      .balign 16
      \operation \last, \registers\mask
      ret
    .endr
  .endr
.endm
.macro LmVbmiOperation operation, v, n
  .irp last, %\v\()17, %\v\()12, (%rdx), \n(%r13), -2*\n(%r12), (%r13), "7(%rdx,%r10,4)", "8(%rsp,%r11)", "(,%r8,8)"
    LmVbmiForm \operation, \v, "\last"
  .endr
  LmVbmiForm \operation, \v, kLmVbmiMemory+320(%rip)
.endm
.macro LmVbmiLength v, bytes, words
  .irp operation, vpermb, vpermi2b, vpermt2b, vpmultishiftqb
    LmVbmiOperation \operation, \v, \bytes
  .endr
  LmVbmiForm vpmultishiftqb, \v, "-24(%r9,%r10,2){1to\words}"
.endm
kLmVbmiForms:
LmVbmiLength xmm, 16, 2
LmVbmiLength ymm, 32, 4
LmVbmiLength zmm, 64, 8

LmVbmiRun:
  push %r12
  push %r13
  push %rdi
  mov %rdx, %r8
  shr $3, %r8
  mov %rdx, %r9
  mov $-9, %r10
  mov %rdx, %r11
  sub %rsp, %r11
  mov %rdx, %r12
  mov %rdx, %r13
  test %ecx, %ecx
  jnz 1f
  .irp n, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31
    vmovdqu64 64*\n(%rdi), %zmm\n
  .endr
  .irp n, 1, 2, 3, 4, 5, 6, 7
    kmovq 2048+8*\n(%rdi), %k\n
  .endr
  jmp 2f
1:
  mov $0xE0, %eax
  xor %edx, %edx
  vzeroall
  xrstor kLmVbmiInitial(%rip)
  mov %r12, %rdx
2:
  call *%rsi
  pop %rdi
  pop %r13
  pop %r12
  .irp n, 0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27, 28, 29, 30, 31
    vmovdqu64 %zmm\n, 64*\n(%rdi)
  .endr
  .irp n, 1, 2, 3, 4, 5, 6, 7
    kmovq %k\n, 2048+8*\n(%rdi)
  .endr
  vzeroupper
  ret
)asm");

namespace LmImagingLib {
namespace {

struct State {
  std::uint8_t zmm[32][64];
  std::uint64_t k[8];
};

extern "C" {
extern const std::uint8_t kLmVbmiMemory[1024], kLmVbmiForms[];
/// Runs a form. Its memory is at or around `memory`. Where `initial` is set, the state is all zeros and marked as such
/// by the processor, which is how threads begin.
void LmVbmiRun(State* state, const std::uint8_t* form, const std::uint8_t* memory, bool initial);
}

enum Operation { VPERMB, VPERMI2B, VPERMT2B, VPMULTISHIFTQB };

/// The destination by the definition of the instruction.
void RunModel(Operation operation, std::size_t bytes, const std::uint8_t* first, const std::uint8_t* second,
              std::uint64_t mask, bool zeroes, std::uint8_t* destination) {
  std::uint8_t tables[128];  // what indices of two registers count through
  std::memcpy(tables, operation == VPERMI2B ? first : operation == VPERMT2B ? destination : second, bytes);
  std::memcpy(tables + bytes, second, bytes);
  std::uint8_t result[64] = {};
  for (std::size_t i = 0; i < bytes; ++i) {
    if ((mask >> i & 1) == 0) {
      result[i] = zeroes ? 0 : destination[i];
    } else if (operation == VPMULTISHIFTQB) {
      for (unsigned bit = 0; bit < 8; ++bit) {
        const unsigned from = (first[i] + bit) % 64;
        result[i] = static_cast<std::uint8_t>(result[i] | (second[i / 8 * 8 + from / 8] >> from % 8 & 1) << bit);
      }
    } else {
      result[i] = tables[(operation == VPERMI2B ? destination : first)[i] % (2 * bytes)];
    }
  }
  std::memcpy(destination, result, sizeof result);
}

TEST(Avx512VbmiEmulation, RunsEachFormLikeTheDefinition) {
  if (__builtin_cpu_supports("avx512bw") == 0) GTEST_SKIP() << "no AVX-512BW here";
  std::optional<Avx512VbmiEmulation> emulation;
  if (__builtin_cpu_supports("avx512vbmi") == 0) emulation.emplace();

  std::mt19937_64 random{4};
  const std::uint8_t* const memory = kLmVbmiMemory + 256;
  const std::uint8_t* form = kLmVbmiForms;
  const auto expectLikeModel = [&](Operation operation, std::size_t bytes, int last, const std::uint8_t* inMemory) {
    const struct { int first, destination; } registers[] = {{9, 30}, {28, 3}, {12, 12}};
    for (const auto& [first, destination] : registers) {
      for (const int mask : {0, 3, 5}) {
        for (const bool initial : {false, false, false, true}) {
          State state{};
          if (!initial) {
            for (auto& zmm : state.zmm) std::generate_n(zmm, 64, [&] { return static_cast<std::uint8_t>(random()); });
            std::generate_n(state.k + 1, 7, random);
          }
          State expected = state;
          RunModel(operation, bytes, state.zmm[first], inMemory != nullptr ? inMemory : state.zmm[last],
                   mask == 0 ? ~std::uint64_t{0} : state.k[mask], mask == 5, expected.zmm[destination]);
          LmVbmiRun(&state, form, memory, initial);
          ASSERT_EQ(std::memcmp(&state, &expected, sizeof state), 0)
              << "operation " << operation << " on " << bytes << " bytes at kLmVbmiForms+" << form - kLmVbmiForms
              << (initial ? ", from the initial state" : "");
        }
        form += 16;
      }
    }
  };
  for (const int bytes : {16, 32, 64}) {
    const auto size = static_cast<std::size_t>(bytes);
    for (const auto operation : {VPERMB, VPERMI2B, VPERMT2B, VPMULTISHIFTQB}) {
      for (const int last : {17, 12}) expectLikeModel(operation, size, last, nullptr);
      for (const int at : {0, bytes, -2 * bytes, 0, 7 - 9 * 4, 0, 0, 64}) {
        expectLikeModel(operation, size, 0, memory + at);
      }
    }
    std::uint8_t words[64];
    for (std::size_t i = 0; i < sizeof words; ++i) words[i] = memory[-24 - 9 * 2 + static_cast<int>(i % 8)];
    expectLikeModel(VPMULTISHIFTQB, size, 0, words);
  }
}

TEST(Avx512VbmiEmulation, LeavesOtherSignalsToEndTheProcess) {
  const Avx512VbmiEmulation emulation;
  EXPECT_EXIT(__asm__("ud2"), testing::KilledBySignal(SIGILL), "");
  EXPECT_EXIT(std::raise(SIGILL), testing::KilledBySignal(SIGILL), "");
  // VPERMB with a broadcast, which it does not have.
  EXPECT_EXIT(__asm__(".byte 0x62, 0xF2, 0x7D, 0x58, 0x8D, 0x00"), testing::KilledBySignal(SIGILL), "");
}

}  // namespace
}  // namespace LmImagingLib
