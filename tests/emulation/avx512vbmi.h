#pragma once

#include <csignal>

namespace LmImagingLib {

/// Runs AVX-512 VBMI on x86-64 processors that have AVX-512BW only, for all threads of the process and while it exists.
/// Each such instruction raises SIGILL there, takes some microseconds to emulate, and has the result that the processor
/// would give. Everything else that raises SIGILL ends the process, as it does without an emulation.
///
/// The unit tests run as a whole with an emulation, and find the instruction set `avx512vbmi`, where the environment
/// variable LM_EMULATE_AVX512VBMI is set.
class Avx512VbmiEmulation {
 public:
  Avx512VbmiEmulation();
  Avx512VbmiEmulation(const Avx512VbmiEmulation&) = delete;
  Avx512VbmiEmulation& operator=(const Avx512VbmiEmulation&) = delete;
  ~Avx512VbmiEmulation();

 private:
  struct sigaction mPrevious {};
};

}  // namespace LmImagingLib
