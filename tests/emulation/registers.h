#pragma once

#include <cpuid.h>
#include <ucontext.h>

#include <array>
#include <cstdint>
#include <cstring>

// The registers of a thread that a signal interrupted, where the kernel saved them. It gives them back when the handler
// returns.

namespace LmImagingLib::emulation {

using Vector = std::array<std::uint8_t, 64>;

/// Parts of the processor's state, as XSAVE numbers them.
enum Component : unsigned { XMM = 1, YMM_HIGH = 2, OPMASK = 5, ZMM_HIGH = 6, ZMM_16_TO_31 = 7 };

/// Where XSAVE stores each component. Read before signals arrive, since CPUID is slow on virtual machines.
class Layout {
 public:
  Layout() {
    mOffsets[XMM] = 160;
    for (const unsigned component : {YMM_HIGH, OPMASK, ZMM_HIGH, ZMM_16_TO_31}) {
      unsigned unused = 0;
      __cpuid_count(0xD, component, unused, mOffsets[component], unused, unused);
    }
  }
  std::size_t operator[](Component component) const { return mOffsets[component]; }

 private:
  unsigned mOffsets[ZMM_16_TO_31 + 1] = {};
};

/// The bytes at an address from a register.
inline const std::uint8_t* Memory(std::int64_t address) {
  return reinterpret_cast<const std::uint8_t*>(address);  // NOLINT(performance-no-int-to-ptr)
}

class Registers {
 public:
  Registers(ucontext_t& context, const Layout& layout)
      : mLayout(layout),
        mGeneral(context.uc_mcontext.gregs),
        mArea(reinterpret_cast<std::uint8_t*>(context.uc_mcontext.fpregs)) {}

  const std::uint8_t* InstructionPointer() const { return Memory(mGeneral[REG_RIP]); }
  void SetInstructionPointer(const std::uint8_t* at) { mGeneral[REG_RIP] = reinterpret_cast<greg_t>(at); }

  std::int64_t General(unsigned number) const {
    constexpr int kPlaces[] = {REG_RAX, REG_RCX, REG_RDX, REG_RBX, REG_RSP, REG_RBP, REG_RSI, REG_RDI,
                               REG_R8,  REG_R9,  REG_R10, REG_R11, REG_R12, REG_R13, REG_R14, REG_R15};
    return mGeneral[kPlaces[number]];
  }

  std::uint64_t Mask(unsigned number) const {
    std::uint64_t mask = 0;
    Read(OPMASK, number, 8, &mask);
    return mask;
  }

  Vector GetVector(unsigned number) const {
    Vector v;
    if (number < 16) {
      Read(XMM, number, 16, v.data());
      Read(YMM_HIGH, number, 16, v.data() + 16);
      Read(ZMM_HIGH, number, 32, v.data() + 32);
    } else {
      Read(ZMM_16_TO_31, number - 16, 64, v.data());
    }
    return v;
  }

  void SetVector(unsigned number, const Vector& v) {
    if (number < 16) {
      Write(XMM, number, 16, v.data());
      Write(YMM_HIGH, number, 16, v.data() + 16);
      Write(ZMM_HIGH, number, 32, v.data() + 32);
    } else {
      Write(ZMM_16_TO_31, number - 16, 64, v.data());
    }
  }

 private:
  std::uint8_t* Place(Component component, unsigned number, std::size_t bytes) const {
    return mArea + mLayout[component] + number * bytes;
  }

  void Read(Component component, unsigned number, std::size_t bytes, void* to) const {
    std::memcpy(to, Place(component, number, bytes), bytes);
  }

  void Write(Component component, unsigned number, std::size_t bytes, const void* from) {
    std::memcpy(Place(component, number, bytes), from, bytes);
    // Components without their bit here are all zeros, and set to that at the end of the handler.
    constexpr std::size_t kPresent = 512;
    mArea[kPresent] = static_cast<std::uint8_t>(mArea[kPresent] | 1U << component);
  }

  const Layout& mLayout;
  greg_t* mGeneral;
  std::uint8_t* mArea;
};

}  // namespace LmImagingLib::emulation
