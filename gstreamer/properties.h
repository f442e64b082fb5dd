#pragma once

#include <gst/gst.h>

#include "settings.h"

namespace LmGst {

/// Adds the properties of the element to its class.
void InstallProperties(GObjectClass* type);

/// Whether a property changes the sizes or formats that the pads agree on.
bool ChangesCaps(unsigned property);

/// Sets a property. Invalid texts are kept with their fault.
void SetProperty(Settings& settings, unsigned property, const GValue* value);

/// Reads a property.
/// @param gains  those in use
void GetProperty(const Settings& settings, const LmTool::Triple& gains, unsigned property, GValue* value);

}  // namespace LmGst
