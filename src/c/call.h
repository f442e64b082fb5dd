#pragma once

#include <exception>
#include <new>
#include <string>
#include <utility>

#include "LmImagingLib/Extended.h"
#include "LmImagingLib/Image.h"
#include "LmImagingLib/lmimaging.h"

// A call of the interface for C: its outcome becomes a code and the message of the thread.
namespace LmImagingLib::C {

/// A call that is refused before it has an effect.
struct Refusal {
  ConversionResult result;
};

/// Ends the call.
[[noreturn]] inline void Refuse(std::string message, LmiCode code = LMI_INVALID_PARAMETER) {
  throw Refusal{{code, std::move(message)}};
}

/// Ends the call if a pointer is null.
inline void RequirePointer(const void* pointer, const char* name) {
  if (pointer == nullptr) Refuse(std::string(name) + " is null");
}

/// Keeps the message for `lmiMessage`, without memory of its own.
/// @return `code`
LmiCode Report(int code, const char* message) noexcept;

/// Registers the extended formats at the first call.
inline void RegisterFormatsOnce() {
  static const bool isRegistered = RegisterExtendedFormats().IsOK() ? true : throw std::bad_alloc();
  static_cast<void>(isRegistered);
}

/// Runs a call, from which no exception comes.
/// @param work  returns a `ConversionResult`; throws a `Refusal`, or exceptions of the library
template <class Work>
LmiCode Call(const Work& work) noexcept {
  try {
    RegisterFormatsOnce();
    const ConversionResult result = work();
    return Report(result.result.GetCode(), result.message.c_str());
  } catch (const Refusal& refusal) {
    return Report(refusal.result.result.GetCode(), refusal.result.message.c_str());
  } catch (const std::bad_alloc&) {
    return Report(LMI_NOT_ENOUGH_MEMORY, "out of memory");
  } catch (const std::exception& error) {
    return Report(LMI_FAILED, error.what());
  } catch (...) {
    return Report(LMI_FAILED, "an unknown exception");
  }
}

}  // namespace LmImagingLib::C
