// The system's own request for a rating, where the host has one.
// The system decides whether the user sees it, and tells nobody what the answer was.
#pragma once

#include <functional>

class SKStoreReviewController {
  public:
    static bool isAvailable();
    static void requestReview();
    /// What the host does; empty where it has no such request.
    static void setRequest(std::function<void()> request);
};
