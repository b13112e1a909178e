// A cell's places: icon, texts, chevron from where lines begin to where they end, whichever side that is.
// Texts wrap; the icon and the chevron stand in the middle of the height.
#include "platform/ui/ui_table_view_cell.h"

#include <algorithm>
#include <initializer_list>

#include "platform/ui/text_measure.h"
#include "platform/ui/ui_layout_direction.h"

namespace {

constexpr CGFloat padding = 14;
constexpr CGFloat verticalPadding = 9;
constexpr CGFloat iconSide = 40;
constexpr CGFloat glyphGap = 14;
constexpr CGFloat chevronRoom = 24;
constexpr CGFloat lowest = 48;
constexpr CGFloat lineGap = 1;
constexpr double textSize = 17;
constexpr double detailSize = 13.5;
constexpr CGFloat lightInset = 4;
constexpr CGFloat lightRadius = 11;
constexpr UIColor lightColor = UIColor::white(1, 0.14);
constexpr UIColor detailColor = UIColor::white(0.68);
constexpr UIColor chevronColor = UIColor::white(0.5);
constexpr double highlightDelay = 0.06;  // s; a finger that scrolls has moved on by then
constexpr double deselectSeconds = 0.4;

}  // namespace

UITableViewCell::UITableViewCell() {
    _light->setBackgroundColor(lightColor);
    _light->setCornerRadius(lightRadius);
    _light->setAlpha(0);
    _textLabel->setFont(UIFont::systemFontOfSize(textSize));
    _textLabel->setNumberOfLines(0);
    _detailTextLabel->setFont(UIFont::systemFontOfSize(detailSize));
    _detailTextLabel->setTextColor(detailColor);
    _detailTextLabel->setNumberOfLines(0);
    _imageView->setContentMode(UIViewContentMode::center);
    for (const std::shared_ptr<UIView>& part :
         std::initializer_list<std::shared_ptr<UIView>>{_light, _imageView, _textLabel, _detailTextLabel}) {
        part->setUserInteractionEnabled(false);
        addSubview(part);
    }
}

void UITableViewCell::setAccessoryType(UITableViewCellAccessoryType type) {
    _accessoryType = type;
    setNeedsLayout();
    setNeedsDisplay();
}

void UITableViewCell::light(bool lit, double delay, double seconds) {
    const auto change = [light = _light, lit] { light->setAlpha(lit ? 1 : 0); };
    if (delay <= 0 && seconds <= 0) return change();
    UIView::animateWithDuration(seconds, delay, UIViewAnimationOptionBeginFromCurrentState, change);
}

void UITableViewCell::setSelected(bool selected, bool animated) {
    _isSelected = selected;
    light(selected || _isHighlighted, 0, animated ? deselectSeconds : 0);
}

void UITableViewCell::setHighlighted(bool highlighted) {
    if (highlighted == _isHighlighted) return;
    _isHighlighted = highlighted;
    light(highlighted || _isSelected, highlighted ? highlightDelay : 0, 0);
}

void UITableViewCell::setFocused(bool focused) {
    if (focused == _isFocused) return;
    _isFocused = focused;
    setNeedsDisplay();
}

CGFloat UITableViewCell::textInset() const {
    return _imageView->image() ? padding + iconSide + glyphGap : padding + 2;
}

CGFloat UITableViewCell::textWidth(CGFloat width) const {
    const bool hasChevron = _accessoryType == UITableViewCellAccessoryType::disclosureIndicator;
    return std::max(width - textInset() - padding - (hasChevron ? chevronRoom : 0), 1.0);
}

CGFloat UITableViewCell::heightForWidth(CGFloat width) const {
    const CGFloat room = textWidth(width);
    CGFloat height = 2 * verticalPadding;
    if (!_textLabel->text().empty())
        height += measureText(_textLabel->text(), _textLabel->font(), room).height;
    if (!_detailTextLabel->text().empty())
        height += lineGap + measureText(_detailTextLabel->text(), _detailTextLabel->font(), room).height;
    if (_imageView->image()) height = std::max(height, iconSide + 2 * verticalPadding);
    return std::max(height, lowest);
}

void UITableViewCell::layoutSubviews() {
    const auto direction = userInterfaceLayoutDirection();
    const CGSize size = bounds().size;
    const auto place = [&](UIView& view, CGRect rect) {
        view.setFrame(directed(rect, size.width, direction));
    };
    _light->setFrame(CGRectInset(bounds(), lightInset, lightInset));
    place(*_imageView, CGRectMake(padding, (size.height - iconSide) / 2, iconSide, iconSide));
    _imageView->setHidden(!_imageView->image());

    const CGFloat room = textWidth(size.width);
    const auto heightOf = [room](const UILabel& label) {
        return label.text().empty() ? 0.0 : measureText(label.text(), label.font(), room).height;
    };
    const CGFloat textHeight = heightOf(*_textLabel);
    const CGFloat detailHeight = heightOf(*_detailTextLabel);
    const CGFloat gap = textHeight > 0 && detailHeight > 0 ? lineGap : 0;
    const CGFloat top = (size.height - textHeight - gap - detailHeight) / 2;
    place(*_textLabel, CGRectMake(textInset(), top, room, textHeight));
    place(*_detailTextLabel, CGRectMake(textInset(), top + textHeight + gap, room, detailHeight));
    const auto alignment = direction == UIUserInterfaceLayoutDirection::rightToLeft ? NSTextAlignment::right
                                                                                    : NSTextAlignment::left;
    _textLabel->setTextAlignment(alignment);
    _detailTextLabel->setTextAlignment(alignment);
}

void UITableViewCell::drawRect(Canvas& canvas, CGRect bounds) {
    if (_isFocused) {
        const CGRect ring = CGRectInset(bounds, lightInset - 1, lightInset - 1);
        canvas.strokePath(UIBezierPath::bezierPathWithRoundedRect(ring, lightRadius), 2, UIColor::white());
    }
    if (_accessoryType != UITableViewCellAccessoryType::disclosureIndicator) return;
    const bool mirrored = userInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::rightToLeft;
    auto chevron = UIBezierPath::pathWithSVGData(mirrored ? "M6 0 0 6l6 6" : "M0 0l6 6-6 6");
    if (!chevron) return;
    canvas.save();
    canvas.translate(mirrored ? padding + 4 : bounds.size.width - padding - 10, CGRectGetMidY(bounds) - 6);
    canvas.strokePath(*chevron, 2, chevronColor);
    canvas.restore();
}

const std::string& UITableViewCell::accessibilityLabel() const {
    const std::string& own = UIView::accessibilityLabel();
    if (!own.empty() || !isSelectable()) return own;
    _label = _textLabel->text();
    if (!_detailTextLabel->text().empty()) _label += ", " + _detailTextLabel->text();
    return _label;
}

bool UITableViewCell::accessibilityActivate() {
    if (!_tapped || !isSelectable()) return false;
    const auto tapped = _tapped;
    tapped();
    return true;
}

void UITableViewCell::accessibilityElementDidBecomeFocused() {
    if (_reached) _reached();
}

void UITableViewCell::accessibilityElementDidLoseFocus() {
    if (_isFocused && _left) _left();
}
