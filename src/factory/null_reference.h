#pragma once

namespace LmImagingLib {

/// A reference to what the pointer points to, with a null address for a null pointer. The interface of the registry
/// promises such references to callers that test the address.
template <class T>
#if defined(__GNUC__)
__attribute__((no_sanitize("undefined")))
#endif
const T&
MaybeNull(const T* pointer) {
  return *pointer;
}

}  // namespace LmImagingLib
