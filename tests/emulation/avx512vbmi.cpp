// AVX-512 VBMI by software, at the signal that the instructions raise where the processor does not have them.
#include "emulation/avx512vbmi.h"

#include <cstdio>
#include <cstdlib>

#include "emulation/instruction.h"

namespace LmImagingLib {
namespace {

using namespace emulation;

std::uint8_t Multishift(const Vector& words, const Vector& shifts, std::size_t i) {
  std::uint64_t word = 0;
  std::memcpy(&word, &words[i / 8 * 8], 8);
  const unsigned shift = shifts[i] & 63;
  return static_cast<std::uint8_t>(word >> shift | word << (64 - shift) % 64);
}

/// Runs the instruction and returns true, or does nothing if it is none of AVX-512 VBMI.
bool Emulate(Registers& registers) {
  const Instruction instruction(registers.InstructionPointer());
  const Operation operation = instruction.Decode();
  if (operation == Operation::NONE) return false;

  const std::size_t bytes = instruction.Bytes();
  const std::uint64_t mask = instruction.Mask(registers);
  const Vector destination = registers.GetVector(instruction.Destination());
  const Vector first = instruction.First(registers);
  const Vector second = instruction.Second(registers);
  // Indices count through two registers; with VPERMB both are the same one.
  const Vector& index = operation == Operation::VPERMI2B ? destination : first;
  const Vector& table = operation == Operation::VPERMI2B   ? first
                        : operation == Operation::VPERMT2B ? destination
                                                           : second;
  Vector result{};
  for (std::size_t i = 0; i < bytes; ++i) {
    if ((mask >> i & 1) == 0) {
      result[i] = instruction.Zeroes() ? 0 : destination[i];
    } else if (operation == Operation::VPMULTISHIFTQB) {
      result[i] = Multishift(second, first, i);
    } else {
      result[i] = ((index[i] & bytes) != 0 ? second : table)[index[i] % bytes];
    }
  }
  registers.SetVector(instruction.Destination(), result);
  registers.SetInstructionPointer(instruction.End());
  return true;
}

const Layout& SavedLayout() {
  static const Layout sLayout;
  return sLayout;
}

void OnIllegalInstruction(int signal, siginfo_t* info, void* context) {
  Registers registers(*static_cast<ucontext_t*>(context), SavedLayout());
  if (info->si_code > 0 && Emulate(registers)) return;  // a process that sends the signal gives other codes
  std::signal(signal, SIG_DFL);
  std::raise(signal);  // arrives when the handler has returned
}

/// Where `__builtin_cpu_supports` of g++ and clang looks.
extern "C" struct {
  unsigned vendor, type, subtype, features;
} cpuModel __asm__("__cpu_model") __attribute__((visibility("hidden")));
constexpr unsigned kAvx512Vbmi = 1U << 26;

/// Runs before anything asks for the instruction sets.
__attribute__((constructor(102))) void EmulateOnRequest() {
  if (std::getenv("LM_EMULATE_AVX512VBMI") == nullptr) return;
  __builtin_cpu_init();
  if (__builtin_cpu_supports("avx512vbmi") != 0) return;
  static const auto& sEmulation = *new Avx512VbmiEmulation;  // what converts at exit needs it, too
  (void)sEmulation;
  cpuModel.features |= kAvx512Vbmi;
  if (__builtin_cpu_supports("avx512vbmi") == 0) {
    std::fputs("LM_EMULATE_AVX512VBMI: this compiler stores the processor's features in an unknown place\n", stderr);
    std::abort();
  }
}

}  // namespace

Avx512VbmiEmulation::Avx512VbmiEmulation() {
  SavedLayout();
  struct sigaction action {};
  action.sa_sigaction = OnIllegalInstruction;
  action.sa_flags = SA_SIGINFO;
  sigaction(SIGILL, &action, &mPrevious);
}

Avx512VbmiEmulation::~Avx512VbmiEmulation() { sigaction(SIGILL, &mPrevious, nullptr); }

}  // namespace LmImagingLib
