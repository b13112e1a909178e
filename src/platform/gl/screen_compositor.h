// Puts the screen together: the root's GLKView below, the views above it as one texture, painted again only
// when a view changed.
#pragma once

#include <memory>

#include "platform/ui/ui_application.h"

/// Needs the shared GLSurface; without a context the overlay is lost too, and nothing is shown.
std::unique_ptr<FramePresenter> makeScreenCompositor();
