// The alert's box in the middle of the dimmed screen, and its buttons.
// The box is as high as its texts; what would not fit the screen is cut from the message.
#include "platform/ui/ui_alert_controller.h"

#include <algorithm>
#include <optional>
#include <utility>

#include "platform/ui/text_measure.h"
#include "platform/ui/ui_control.h"
#include "platform/ui/ui_layout_direction.h"

namespace {

constexpr double dimming = 0.45;
constexpr CGFloat widest = 340;
constexpr CGFloat widestRow = 620;
constexpr CGFloat margin = 16;
constexpr CGFloat padding = 20;
constexpr CGFloat gap = 8;
constexpr CGFloat buttonHeight = 44;
constexpr CGFloat boxRadius = 16;
constexpr double titleFont = 17;
constexpr double messageFont = 14;
constexpr double buttonFont = 16;
constexpr UIColor boxColor{0.13, 0.14, 0.18, 0.98};
constexpr UIColor lineColor = UIColor::white(1, 0.12);
constexpr UIColor focusColor = UIColor::white(1, 0.1);
constexpr UIColor actionColor{0.45, 0.7, 1, 1};
constexpr UIColor destructiveColor{1, 0.45, 0.4, 1};

UIFont fontOf(const UIAlertAction& action) {
    const bool isBold = action.style == UIAlertActionStyle::cancel;
    return isBold ? UIFont::boldSystemFontOfSize(buttonFont) : UIFont::systemFontOfSize(buttonFont);
}

std::shared_ptr<UILabel> makeLabel(const std::string& text, const UIFont& font, UIColor color) {
    auto label = std::make_shared<UILabel>();
    label->setText(text);
    label->setFont(font);
    label->setTextColor(color);
    label->setTextAlignment(NSTextAlignment::center);
    label->setNumberOfLines(0);
    return label;
}

/// How many buttons farther a key leads: one, one back, or none.
int stepOf(HostKey key) {
    const bool mirrored = userInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::rightToLeft;
    switch (key) {
        case HostKey::down:
        case HostKey::tab:
            return 1;
        case HostKey::up:
            return -1;
        case HostKey::right:
            return mirrored ? -1 : 1;
        case HostKey::left:
            return mirrored ? 1 : -1;
        default:
            return 0;
    }
}

/// Cut at its lower edge where it has less room than it needs.
class MessageView : public UIView {
  public:
    explicit MessageView(std::shared_ptr<UILabel> label) : _label(std::move(label)) { addSubview(_label); }
    bool clipsToBounds() const override { return true; }
    bool drawsContent() const override { return false; }
    const UILabel& label() const { return *_label; }
    void showPart(CGRect frame, CGFloat wholeHeight) {
        setFrame(frame);
        _label->setFrame(CGRectMake(0, 0, frame.size.width, wholeHeight));
    }

  private:
    std::shared_ptr<UILabel> _label;
};

}  // namespace

/// The whole screen's view: it dims what lies below and takes every touch.
class AlertBoxView : public UIView {
  public:
    AlertBoxView(const std::string& title, const std::string& message,
                 const std::vector<UIAlertAction>& actions, const std::function<void(std::size_t)>& choose)
        : _title(makeLabel(title, UIFont::boldSystemFontOfSize(titleFont), UIColor::white())),
          _message(std::make_shared<MessageView>(
              makeLabel(message, UIFont::systemFontOfSize(messageFont), UIColor::white(0.85)))) {
        setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
        setBackgroundColor(UIColor::black().withAlpha(dimming));
        addSubview(_title);
        addSubview(_message);
        for (std::size_t index = 0; index < actions.size(); ++index) {
            auto button = std::make_shared<UIFocusableButton>();
            button->setTitle(actions[index].title);
            button->setFont(fontOf(actions[index]));
            const bool isDestructive = actions[index].style == UIAlertActionStyle::destructive;
            button->setTintColor(isDestructive ? destructiveColor : actionColor);
            button->setAction([choose, index] { choose(index); });
            addSubview(button);
            _buttons.push_back(std::move(button));
        }
    }

    const std::vector<std::shared_ptr<UIFocusableButton>>& buttons() const { return _buttons; }

    /// One button below the other; side by side in a wider box where that would be too high.
    void layoutSubviews() override {
        const UIEdgeInsets insets = safeAreaInsets();
        const CGFloat room = bounds().size.width - insets.left - insets.right - 2 * margin;
        const CGFloat high = bounds().size.height - insets.top - insets.bottom - 2 * margin;
        const auto count = static_cast<CGFloat>(_buttons.size());
        layOutTexts(std::min(widest, room), high - count * buttonHeight);
        _isRow = heightOfTexts() + count * buttonHeight > high || isCut();
        if (_isRow) layOutTexts(std::min(widestRow, room), high - buttonHeight);
        const CGFloat height = heightOfTexts() + (_isRow ? 1 : count) * buttonHeight;
        _box.size.height = height;
        _box.origin = CGPointMake(insets.left + margin + (room - _box.size.width) / 2,
                                  insets.top + margin + std::max((high - height) / 2, 0.0));
        place();
    }

    void drawRect(Canvas& canvas, CGRect) override {
        const UIBezierPath box = UIBezierPath::bezierPathWithRoundedRect(_box, boxRadius);
        canvas.fillPath(box, FillRule::nonZero, boxColor);
        canvas.save();
        canvas.clipToPath(box, FillRule::nonZero);
        for (std::size_t index = 0; index < _buttons.size(); ++index) {
            const CGRect frame = _buttons[index]->frame();
            if (_buttons[index]->isFocused()) canvas.fillRect(frame, focusColor);
            canvas.fillRect(CGRectMake(frame.origin.x, frame.origin.y, frame.size.width, 1), lineColor);
            if (_isRow && frame.origin.x > _box.origin.x)
                canvas.fillRect(CGRectMake(frame.origin.x, frame.origin.y, 1, frame.size.height), lineColor);
        }
        canvas.restore();
    }
    bool drawsContent() const override { return true; }
    bool swallowsTouches() const override { return true; }
    void touchesBegan(const UITouches&, const UIEvent&) override {}
    void touchesMoved(const UITouches&, const UIEvent&) override {}
    void touchesEnded(const UITouches&, const UIEvent&) override {}

  private:
    /// Sizes of the box's texts, the message no higher than what is left of the height.
    void layOutTexts(CGFloat width, CGFloat height) {
        _box.size.width = std::max(width, 1.0);
        const CGFloat textWidth = _box.size.width - 2 * padding;
        const auto heightOf = [textWidth](const UILabel& label, const UIFont& font) {
            return label.text().empty() ? 0.0 : measureText(label.text(), font, textWidth).height;
        };
        _titleHeight = heightOf(*_title, UIFont::boldSystemFontOfSize(titleFont));
        _wantedHeight = heightOf(_message->label(), UIFont::systemFontOfSize(messageFont));
        _messageHeight =
            std::min(_wantedHeight, std::max(height - padding - _titleHeight - gap - padding, 0.0));
    }
    bool isCut() const { return _messageHeight < _wantedHeight; }
    CGFloat heightOfTexts() const { return padding + _titleHeight + gap + _messageHeight + padding; }

    void place() {
        const CGFloat left = _box.origin.x + padding;
        const CGFloat textWidth = _box.size.width - 2 * padding;
        _title->setFrame(CGRectMake(left, _box.origin.y + padding, textWidth, _titleHeight));
        const CGFloat top = _box.origin.y + padding + _titleHeight + gap;
        _message->showPart(CGRectMake(left, top, textWidth, _messageHeight), _wantedHeight);
        const CGFloat width =
            _isRow ? _box.size.width / static_cast<CGFloat>(_buttons.size()) : _box.size.width;
        const auto direction = userInterfaceLayoutDirection();
        CGRect frame = CGRectMake(0, heightOfTexts(), width, buttonHeight);
        for (const auto& button : _buttons) {
            const CGRect directedFrame = directed(frame, _box.size.width, direction);
            button->setFrame(CGRectOffset(directedFrame, _box.origin.x, _box.origin.y));
            (_isRow ? frame.origin.x : frame.origin.y) += _isRow ? width : buttonHeight;
        }
    }

    std::shared_ptr<UILabel> _title;
    std::shared_ptr<MessageView> _message;
    std::vector<std::shared_ptr<UIFocusableButton>> _buttons;
    CGRect _box;
    CGFloat _titleHeight = 0;
    CGFloat _messageHeight = 0;
    /// Of the whole message.
    CGFloat _wantedHeight = 0;
    bool _isRow = false;
};

UIAlertController::UIAlertController(std::string title, std::string message)
    : _title(std::move(title)), _message(std::move(message)) {
    setModalPresentationStyle(UIModalPresentationStyle::overFullScreen);
    setModalTransitionStyle(UIModalTransitionStyle::crossDissolve);
    setModalInPresentation(true);
}

void UIAlertController::loadView() {
    _box = std::make_shared<AlertBoxView>(_title, _message, _actions,
                                          [this](std::size_t index) { choose(index); });
    setView(_box);
}

void UIAlertController::choose(std::size_t index) {
    if (std::exchange(_isAnswered, true)) return;
    // The handler may let go of the alert.
    const auto self = shared_from_this();
    const std::function<void()> handler = _actions[index].handler;
    if (const auto presenter = presentingViewController()) presenter->dismissViewControllerAnimated(true);
    if (handler) handler();
}

bool UIAlertController::keyPressed(const HostKeyPress& press) {
    const std::size_t count = _actions.size();
    if (count == 0 || press.repeated) return true;
    const auto& buttons = _box->buttons();
    const std::optional<std::size_t> focused = focusedIndex(buttons);
    if (const int step = stepOf(press.key); step != 0) {
        const std::size_t from = focused.value_or(step > 0 ? count - 1 : 0);
        focusIndex(buttons, (from + (step > 0 ? 1 : count - 1)) % count);
        return true;
    }
    const bool chooses = press.key == HostKey::returnKey || press.key == HostKey::space;
    if (chooses && focused) choose(*focused);
    if (press.key != HostKey::escape) return true;
    const auto cancel = std::find_if(_actions.begin(), _actions.end(), [](const UIAlertAction& action) {
        return action.style == UIAlertActionStyle::cancel;
    });
    if (cancel != _actions.end()) choose(static_cast<std::size_t>(cancel - _actions.begin()));
    return true;
}
