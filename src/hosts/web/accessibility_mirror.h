// What the page mirrors as real elements: the list of labelled views, told when it changed.
// Ids name views: a screen reader that stands on a button stays there while others come and go.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "platform/ui/ui_accessibility.h"

class AccessibilityMirror {
  public:
    /// A view changed: the list may have.
    void noteChange() { _stale = true; }
    /// Tells the page if the list changed, no sooner than a quarter of a second after it was looked at last.
    /// time: seconds, growing.
    void update(const UIWindow& window, double time);
    /// The next update does not wait: the user goes from view to view by key.
    void hurry() { _lookedAt = -1; }
    /// As a tap on the view of this id. NO for a view that is gone or does nothing.
    bool activate(int id) const;
    /// The keyboard or the screen reader has come to the view of this id, from whichever it was at.
    void focus(int id);

  private:
    using WeakView = std::weak_ptr<UIView>;

    std::string listAsJSON(const UIWindow& window);
    std::shared_ptr<UIView> viewOf(int id) const;
    int idOf(const std::shared_ptr<UIView>& view);
    void forgetTheGone();

    bool _stale = false;
    double _lookedAt = -1;
    std::string _told;
    std::map<WeakView, int, std::owner_less<WeakView>> _ids;
    int _lastId = 0;
};
