// Xlib ends the process when a request fails, a driver that cannot be loaded included.
// The app would rather hear of it from SDL and say so itself.
#pragma once

/// From now on a failed X request is a line in the log. Does nothing where Xlib is not at work. SDL's video
/// is running.
void surviveX11Errors();
