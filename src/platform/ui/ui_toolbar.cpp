// Bar items and the bar that lays their buttons out.
// The same items must fit a phone and look right on a wide screen, so spaces give way and buttons do not.
#include "platform/ui/ui_toolbar.h"

#include <algorithm>
#include <any>
#include <cmath>
#include <utility>

namespace {

constexpr CGFloat minimumTarget = 44;
constexpr CGFloat buttonPadding = 11;
constexpr CGFloat barMargin = 8;
constexpr CGFloat smallestGap = 2;
constexpr CGFloat widestGap = 20;
const UIFont titleFont = UIFont::boldSystemFontOfSize(15);
constexpr UIColor hairline = UIColor::white(1, 0.14);

/// What stands between the buttons of a bar, in points.
struct Spacing {
    CGFloat margin = barMargin;
    CGFloat gap = 0;
    CGFloat flexible = 0;
    CGFloat shrink = 1;  ///< factor on the buttons' widths
};

/// Gaps take a third of the room that the buttons leave, within limits; flexible spaces take the rest.
Spacing spacingFor(CGFloat width, CGFloat content, std::size_t buttons, std::size_t spaces) {
    Spacing spacing;
    const auto gaps = static_cast<CGFloat>(buttons > 1 ? buttons - 1 : 1);
    const CGFloat room = width - content - 2 * spacing.margin;
    if (room < gaps * smallestGap) {
        spacing.gap = std::max(room / gaps, 0.0);
        spacing.margin = std::clamp((width - content) / 2, 0.0, spacing.margin);
        spacing.shrink = content > width ? std::max(width, 0.0) / content : 1;
        return spacing;
    }
    spacing.gap = std::clamp(room / 3 / gaps, smallestGap, widestGap);
    const CGFloat rest = room - gaps * spacing.gap;
    if (spaces > 0) {
        spacing.flexible = rest / static_cast<CGFloat>(spaces);
    } else {
        const CGFloat share = rest / static_cast<CGFloat>(buttons + 1);
        spacing.gap += share;
        spacing.margin += share;
    }
    return spacing;
}

CGFloat naturalWidth(const UIView& view) {
    const auto* button = dynamic_cast<const UIButton*>(&view);
    const CGFloat content = button ? button->contentSize().width + 2 * buttonPadding : 0;
    return std::max(std::ceil(content), minimumTarget);
}

}  // namespace

std::shared_ptr<UIButton> UIBarButtonItem::button() const {
    return std::dynamic_pointer_cast<UIButton>(_view.lock());
}

void UIBarButtonItem::dress(UIButton& button) const {
    const auto drawn = _titleImages.find(_title);
    const bool isDrawn = drawn != _titleImages.end();
    button.setTitle(isDrawn ? std::string() : _title);
    button.setImage(isDrawn ? drawn->second : _image);
}

void UIBarButtonItem::appearanceChanged() {
    const auto shown = button();
    if (!shown) return;
    dress(*shown);
    if (UIView* bar = shown->superview()) bar->setNeedsLayout();
}

void UIBarButtonItem::setTitle(std::string title) {
    if (title == _title) return;
    _title = std::move(title);
    appearanceChanged();
}

void UIBarButtonItem::setImage(UIImageRef image) {
    _image = std::move(image);
    appearanceChanged();
}

void UIBarButtonItem::setImageForTitle(const std::string& title, UIImageRef image) {
    _titleImages[title] = std::move(image);
    appearanceChanged();
}

void UIBarButtonItem::setAccessibilityLabel(std::string label) {
    _accessibilityLabel = std::move(label);
    if (const auto shown = view()) shown->setAccessibilityLabel(_accessibilityLabel);
}

void UIBarButtonItem::sendAction() {
    if (const auto shown = button()) shown->flash();
    if (!_action) return;
    const Action action = _action;
    action(shared_from_this());
}

KeyValueTable UIBarButtonItem::makeKeyValueTable() {
    return {
        {"view", KeyValueAccess<std::any>{[this] { return std::any(view()); }, {}}},
        {"title",
         KeyValueAccess<std::any>{[this] { return std::any(title()); },
                                  setterOf<std::string>([this](const auto& text) { setTitle(text); })}},
    };
}

/// Buttons of items that stay are kept, so that a finger on one of them is not lost.
void UIToolbar::setItems(Items items) {
    for (const auto& item : _items) {
        const auto view = item->view();
        const bool stays = std::find(items.begin(), items.end(), item) != items.end();
        if (view && view->superview() == this && !stays) view->removeFromSuperview();
    }
    _items = std::move(items);
    for (const auto& item : _items) {
        if (item->isFlexibleSpace()) continue;
        std::shared_ptr<UIView> view = item->view();
        if (!view) item->setView(view = makeButton(item));
        addSubview(view);
    }
    setNeedsLayout();
}

std::shared_ptr<UIButton> UIToolbar::makeButton(const std::shared_ptr<UIBarButtonItem>& item) const {
    auto button = std::make_shared<UIButton>();
    item->dress(*button);
    button->setFont(titleFont);
    button->setAccessibilityLabel(item->accessibilityLabel());
    button->setAction([weak = std::weak_ptr<UIBarButtonItem>(item)] {
        if (const auto tapped = weak.lock()) tapped->sendAction();
    });
    return button;
}

void UIToolbar::setMaximumWidth(CGFloat width) {
    _maximumWidth = width;
    setNeedsLayout();
    setNeedsDisplay();
}

CGRect UIToolbar::backgroundArea(CGRect bounds) const {
    if (!(_maximumWidth > 0) || bounds.size.width <= _maximumWidth) return bounds;
    const CGFloat left = std::floor((bounds.size.width - _maximumWidth) / 2);
    return {{bounds.origin.x + left, bounds.origin.y}, {_maximumWidth, bounds.size.height}};
}

void UIToolbar::layoutSubviews() {
    CGFloat content = 0;
    std::size_t spaces = 0;
    std::size_t buttons = 0;
    for (const auto& item : _items) {
        if (item->isFlexibleSpace()) {
            ++spaces;
        } else if (const auto view = item->view()) {
            content += naturalWidth(*view);
            ++buttons;
        }
    }
    const CGRect plate = backgroundArea(bounds());
    const Spacing spacing = spacingFor(plate.size.width, content, buttons, spaces);
    CGFloat x = plate.origin.x + spacing.margin;
    for (const auto& item : _items) {
        if (item->isFlexibleSpace()) {
            x += spacing.flexible;
        } else if (const auto view = item->view()) {
            const CGFloat right = x + naturalWidth(*view) * spacing.shrink;
            // Whole points keep the icons' lines sharp; cutting both edges down keeps them apart and inside.
            const CGFloat left = std::floor(x);
            view->setFrame({{left, 0}, {std::floor(right) - left, bounds().size.height}});
            x = right + spacing.gap;
        }
    }
}

/// A thin bright edge sets the bar off from dark pictures.
void UIToolbar::drawRect(Canvas& canvas, CGRect bounds) {
    const CGRect edge = CGRectInset(backgroundArea(bounds), 0.5, 0.5);
    if (CGRectIsEmpty(edge)) return;
    canvas.strokePath(UIBezierPath::bezierPathWithRoundedRect(edge, std::max(cornerRadius() - 0.5, 0.0)), 1,
                      hairline);
}
