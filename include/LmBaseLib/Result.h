#pragma once

/// What the libraries of the family share: the result of an operation, and locks.
namespace LmBaseLib {

/// The status of an operation: one integer code, 0 for success.
///
/// A plain value; copying it is free and any thread may do so.
class Result {
 public:
  /// The codes that this library returns. Others are free for an application's own converters.
  enum Code : int {
    OK = 0,                     ///< success
    INVALID_PARAMETER = 18,     ///< already registered, not registered, out of range, or negative
    NOT_ENOUGH_MEMORY = 24,     ///< for the registry, or for a checked conversion
    NOT_IMPLEMENTED = 26,       ///< the converter does not provide this operation
    FILE_OPEN_FAILED = 0x4000,  ///< a file could not be opened for writing
  };

  Result() = default;
  /// Any code. Implicit, so that an operation ends with `return Result::OK;`.
  Result(int code) : mCode(code) {}  // NOLINT(google-explicit-constructor)

  /// The code, 0 (`OK`) on success.
  int GetCode() const { return mCode; }
  /// Whether the code is `OK`.
  bool IsOK() const { return mCode == OK; }

 private:
  int mCode = OK;
};

}  // namespace LmBaseLib
