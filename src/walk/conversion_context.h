#pragma once

#include <cstddef>
#include <cstdint>

#include "walk/narrow_rows.h"

namespace LmImagingLib {

class PixelConverter;
class RGBFilter;

/// What a running conversion tells its line kernels. One for each thread that is inside a conversion; nested calls of
/// a thread share it.
struct ConversionContext {
  std::uint32_t references = 1;         ///< outstanding acquisitions; touched by the owning thread only
  std::uint32_t sourceLineSize = 0;     ///< bytes from one source line to the next
  std::uint32_t sourceHeight = 0;       ///< lines in the source buffer
  std::uint32_t destinationStride = 0;  ///< bytes from one destination line to the next, padding included
  std::uint32_t destinationHeight = 0;  ///< lines in the destination buffer; a plane has stride x height bytes
  std::uint32_t flags = 0;              ///< bits of `ConversionFlags`
  const RGBFilter* filter = nullptr;    ///< never null while a frame runs
  std::uint32_t currentLine = 0;        ///< the line that the kernel is converting, from 0
  bool streams = false;                 ///< whether the image is too large for the caches; see `StreamScope`
  std::uint32_t fetchAhead = 0;         ///< bytes ahead of which kernels fetch such a source; they decode in bursts
  std::uint32_t stepLines = 2;          ///< destination lines that exist for a kernel of two lines a step
  /// The converter whose frame runs, and rows of its source, for itself alone: others that it calls may be handed lines
  /// in memory that is used again.
  const PixelConverter* frame = nullptr;
  NarrowRows narrowRows;
};

/// The calling thread's context, created if it has none. Counts one reference, to be given back by the release.
/// Only the outermost acquisition of a thread takes a lock.
ConversionContext* AcquireConversionContext();

/// Gives back one reference; the last one destroys the context.
void ReleaseConversionContext(ConversionContext* context);

/// Threads that are inside a conversion.
std::size_t CountConversionContexts();

/// One reference to the calling thread's context, for the length of a scope.
class ContextScope {
 public:
  ContextScope() : mContext(AcquireConversionContext()) {}
  ~ContextScope() { ReleaseConversionContext(mContext); }
  ContextScope(const ContextScope&) = delete;
  ContextScope& operator=(const ContextScope&) = delete;

  ConversionContext* operator->() const { return mContext; }
  ConversionContext& operator*() const { return *mContext; }

 private:
  ConversionContext* mContext;
};

}  // namespace LmImagingLib
