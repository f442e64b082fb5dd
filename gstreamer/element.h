#pragma once

#include <gst/gst.h>

namespace LmGst {

/// The type of the element `lmimagingconvert`; registers it at the first call.
GType ElementType();

}  // namespace LmGst
