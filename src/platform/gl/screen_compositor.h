// Puts the screen together: the root's GLKView below, the views above it as one texture that is painted again
// only when a view changed.
#pragma once

#include <memory>

#include "platform/ui/ui_application.h"

/// Draws into the surface of the root view's context; while there is none, nothing is shown.
std::unique_ptr<FramePresenter> makeScreenCompositor();
