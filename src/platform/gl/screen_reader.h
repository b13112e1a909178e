// Reads the composed screen back for a running recording.
// In the order of bytes that the driver has them in: turning them round here would cost the display's time.
#pragma once

#include "platform/host/gl_surface.h"

/// Hands the frame in the bound screen framebuffer to the host's capture, if that wants one. time: seconds of
/// the app's clock.
void captureScreen(GLSurface& surface, double time);
