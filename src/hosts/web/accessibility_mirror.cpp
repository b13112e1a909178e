// The list as JSON, places in whole points.
// It is compared as text: what is told twice is the same to the last digit.
#include "hosts/web/accessibility_mirror.h"

#include <algorithm>
#include <cmath>
#include <nlohmann/json.hpp>

#include "hosts/web/web_page.h"

namespace {

using nlohmann::json;

constexpr double kPause = 0.25;  // seconds

long whole(CGFloat points) {
    return std::lround(points);
}

json entry(const UIAccessibilityElement& element, int id) {
    const CGRect& frame = element.frame;
    return {{"id", id},
            {"focused", element.isFocused},
            {"role", element.traits == UIAccessibilityTraitButton ? "button" : "text"},
            {"label", element.label},
            {"x", whole(frame.origin.x)},
            {"y", whole(frame.origin.y)},
            {"w", whole(frame.size.width)},
            {"h", whole(frame.size.height)}};
}

}  // namespace

void AccessibilityMirror::update(const UIWindow& window, double time) {
    if (!_stale || (_lookedAt >= 0 && time < _lookedAt + kPause)) return;
    _stale = false;
    _lookedAt = time;
    std::string list = listAsJSON(window);
    if (list == _told) return;
    _told = std::move(list);
    WebPage::mirror(_told);
}

std::shared_ptr<UIView> AccessibilityMirror::viewOf(int id) const {
    const auto found =
        std::find_if(_ids.begin(), _ids.end(), [id](const auto& known) { return known.second == id; });
    const std::shared_ptr<UIView> view = found == _ids.end() ? nullptr : found->first.lock();
    return view && view->window() ? view : nullptr;
}

bool AccessibilityMirror::activate(int id) const {
    const std::shared_ptr<UIView> view = viewOf(id);
    return view && view->accessibilityActivate();
}

void AccessibilityMirror::focus(int id) {
    const std::shared_ptr<UIView> reached = viewOf(id);
    if (!reached) return;
    for (const auto& [weak, known] : std::map(_ids)) {
        const std::shared_ptr<UIView> view = weak.lock();
        if (view && view != reached && view->isFocused()) view->accessibilityElementDidLoseFocus();
    }
    reached->accessibilityElementDidBecomeFocused();
    hurry();
}

std::string AccessibilityMirror::listAsJSON(const UIWindow& window) {
    forgetTheGone();
    json list = json::array();
    for (const UIAccessibilityElement& element : accessibilityElements(window))
        list.push_back(entry(element, idOf(element.view)));
    return list.dump(-1, ' ', false, json::error_handler_t::replace);
}

int AccessibilityMirror::idOf(const std::shared_ptr<UIView>& view) {
    const auto [found, isNew] = _ids.try_emplace(view, _lastId + 1);
    if (isNew) ++_lastId;
    return found->second;
}

void AccessibilityMirror::forgetTheGone() {
    std::erase_if(_ids, [](const auto& known) { return known.first.expired(); });
}
