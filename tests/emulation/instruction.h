#pragma once

#include "emulation/registers.h"

namespace LmImagingLib::emulation {

enum class Operation { NONE, VPERMB, VPERMI2B, VPERMT2B, VPMULTISHIFTQB };

/// An instruction of AVX-512 VBMI in memory:
///
///     0x62 | R X B R' 0 m m m | W v v v v 1 p p | z L' L b V' a a a | opcode | mod reg rm | SIB | displacement
///
/// R, R', X, B, V' and v are inverted; with `reg` and `rm` they are numbers of registers.
class Instruction {
 public:
  explicit Instruction(const std::uint8_t* at) : mBytes(at) {}

  /// NONE if it is another instruction, or a form that the processor does not know. Nothing else may be asked then.
  Operation Decode() const {
    // The map of opcodes 0F38, with the prefix 66.
    if (mBytes[0] != 0x62 || (mBytes[1] & 0x0F) != 2 || (mBytes[2] & 7) != 5) return Operation::NONE;
    if (Bytes() > 64 || (Zeroes() && MaskNumber() == 0)) return Operation::NONE;
    const bool wide = (mBytes[2] & 0x80) != 0;
    if (mBytes[4] == 0x83 && wide && (HasMemory() || !Broadcasts())) return Operation::VPMULTISHIFTQB;
    if (wide || Broadcasts()) return Operation::NONE;
    switch (mBytes[4]) {
      case 0x75:
        return Operation::VPERMI2B;
      case 0x7D:
        return Operation::VPERMT2B;
      case 0x8D:
        return Operation::VPERMB;
      default:
        return Operation::NONE;
    }
  }

  /// The length of its vectors.
  std::size_t Bytes() const { return std::size_t{16} << (mBytes[3] >> 5 & 3); }
  bool Zeroes() const { return (mBytes[3] & 0x80) != 0; }

  unsigned Destination() const { return (mBytes[5] >> 3 & 7) | Inverted(1, 7) << 3 | Inverted(1, 4) << 4; }

  std::uint64_t Mask(const Registers& registers) const {
    return MaskNumber() != 0 ? registers.Mask(MaskNumber()) : ~std::uint64_t{0};
  }

  Vector First(const Registers& registers) const {
    return registers.GetVector((~mBytes[2] >> 3 & 15) | Inverted(3, 3) << 4);
  }

  /// The last operand, a register or memory.
  Vector Second(const Registers& registers) const {
    if (!HasMemory()) return registers.GetVector(LowerRm() | Inverted(1, 5) << 3 | Inverted(1, 6) << 4);
    Vector v{};
    for (std::size_t i = 0; i < Bytes(); i += Unit()) std::memcpy(&v[i], Address(registers), Unit());
    return v;
  }

  const std::uint8_t* End() const { return Displacement() + DisplacementBytes(); }

 private:
  unsigned Inverted(unsigned byte, unsigned bit) const { return ~mBytes[byte] >> bit & 1U; }

  bool Broadcasts() const { return (mBytes[3] & 0x10) != 0; }
  unsigned MaskNumber() const { return mBytes[3] & 7; }
  unsigned Mod() const { return mBytes[5] >> 6; }
  unsigned LowerRm() const { return mBytes[5] & 7; }
  bool HasMemory() const { return Mod() != 3; }
  bool HasSib() const { return HasMemory() && LowerRm() == 4; }
  /// How many bytes are read at once.
  std::size_t Unit() const { return Broadcasts() ? 8 : Bytes(); }

  // The base is a register, but for one number that without a displacement means none.
  unsigned LowerBase() const { return HasSib() ? mBytes[6] & 7 : LowerRm(); }
  bool HasBase() const { return Mod() != 0 || LowerBase() != 5; }

  const std::uint8_t* Displacement() const { return mBytes + (HasSib() ? 7 : 6); }
  std::size_t DisplacementBytes() const {
    if (!HasMemory()) return 0;
    return Mod() == 1 ? 1 : Mod() == 2 || !HasBase() ? 4 : 0;
  }

  const std::uint8_t* Address(const Registers& registers) const {
    std::int64_t address = 0;
    if (DisplacementBytes() == 1) {
      address = static_cast<std::int8_t>(*Displacement()) * static_cast<std::int64_t>(Unit());
    } else if (DisplacementBytes() == 4) {
      std::int32_t displacement = 0;
      std::memcpy(&displacement, Displacement(), 4);
      address = displacement;
    }
    if (HasBase()) {
      address += registers.General(LowerBase() | Inverted(1, 5) << 3);
    } else if (!HasSib()) {
      address += reinterpret_cast<std::int64_t>(End());
    }
    if (HasSib()) {
      const unsigned index = (mBytes[6] >> 3 & 7) | Inverted(1, 6) << 3;
      if (index != 4) address += registers.General(index) * (std::int64_t{1} << (mBytes[6] >> 6));  // 4 means none
    }
    return Memory(address);
  }

  const std::uint8_t* mBytes;
};

}  // namespace LmImagingLib::emulation
