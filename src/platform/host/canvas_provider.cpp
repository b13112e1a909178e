// Holds the canvas provider of this run.
// Views measure and the compositor paints through the same one.
#include "platform/host/canvas_provider.h"

#include <utility>

namespace {
std::shared_ptr<CanvasProvider>& shared() {
    static std::shared_ptr<CanvasProvider> provider;
    return provider;
}
}  // namespace

std::shared_ptr<CanvasProvider> sharedCanvasProvider() {
    return shared();
}

void setSharedCanvasProvider(std::shared_ptr<CanvasProvider> provider) {
    shared() = std::move(provider);
}
