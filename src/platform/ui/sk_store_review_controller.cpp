// Holds the host's request.
// No host has one but the headless one in tests.
#include "platform/ui/sk_store_review_controller.h"

#include <utility>

namespace {

std::function<void()>& slot() {
    static std::function<void()> request;
    return request;
}

}  // namespace

bool SKStoreReviewController::isAvailable() {
    return static_cast<bool>(slot());
}

void SKStoreReviewController::requestReview() {
    if (slot()) slot()();
}

void SKStoreReviewController::setRequest(std::function<void()> request) {
    slot() = std::move(request);
}
