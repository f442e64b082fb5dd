#pragma once

#include "model/bytes.h"
#include "model/catalogue.h"
#include "model/line.h"

namespace model {

/// The bytes of the intermediate image of a chain, before what a kernel writes past its end.
std::size_t IntermediateSize(const Route& route, const Call& call);

/// Converts as the library must: source read, destination written, intermediate (of chains) written and read.
void Convert(const Route& route, const Call& call, Bytes& source, Bytes& destination, Bytes& intermediate);

}  // namespace model
