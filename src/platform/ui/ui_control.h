// Labels, image views and buttons.
// The simple views that screens are made of; bars and lists have files of their own.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/ui/ca_layer.h"
#include "platform/ui/ui_view.h"

class UILabel : public UIView {
  public:
    using UIView::UIView;
    void setText(std::string text);
    const std::string& text() const { return _text; }
    void setFont(UIFont font);
    const UIFont& font() const { return _font; }
    void setTextColor(UIColor color);
    void setTextAlignment(NSTextAlignment alignment);
    /// 1 for a single line with an ellipsis, 0 for as many as needed.
    void setNumberOfLines(int lines);
    /// Keeps the width at most the present one and takes the height of the wrapped lines.
    void sizeToFit();
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return !_text.empty(); }
    /// The text, unless it was given another.
    const std::string& accessibilityLabel() const override;
    UIAccessibilityTraits accessibilityTraits() const override { return UIAccessibilityTraitStaticText; }

  private:
    std::string _text;
    UIFont _font = UIFont::systemFontOfSize(17);
    UIColor _textColor = UIColor::white();
    NSTextAlignment _alignment = NSTextAlignment::left;
    int _lines = 1;
};

enum class UIViewContentMode { scaleToFill, center };

class UIImageView : public UIView {
  public:
    using UIView::UIView;
    void setImage(UIImageRef image);
    const UIImageRef& image() const { return _image; }
    /// Of drawings.
    void setTintColor(UIColor color);
    void setContentMode(UIViewContentMode mode);
    /// The ground below the image.
    const CALayer& layer() const { return _layer; }
    void setLayer(const CALayer& layer);
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return _image != nullptr || _layer != CALayer(); }

  private:
    UIImageRef _image;
    UIColor _tint = UIColor::white();
    UIViewContentMode _mode = UIViewContentMode::scaleToFill;
    CALayer _layer;
};

/// A title or an image that answers a tap: highlighted while a finger is on it, acting when it lifts there.
class UIButton : public UIView {
  public:
    using UIView::UIView;
    void setTitle(std::string title);
    const std::string& title() const { return _title; }
    void setImage(UIImageRef image);
    void setFont(UIFont font);
    void setTintColor(UIColor color);
    void setAction(std::function<void()> action) { _action = std::move(action); }
    bool isHighlighted() const { return _highlighted; }
    /// Lights up for a moment, as if a finger had tapped (a key did).
    void flash();
    /// The width and height in points that image and title need, without any margin.
    CGSize contentSize() const;
    bool swallowsTouches() const override { return true; }
    void layoutSubviews() override;
    void drawRect(Canvas& canvas, CGRect bounds) override;
    /// The title, unless it was given another.
    const std::string& accessibilityLabel() const override;
    UIAccessibilityTraits accessibilityTraits() const override { return UIAccessibilityTraitButton; }
    bool accessibilityActivate() override;
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesMoved(const UITouches& touches, const UIEvent& event) override;
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) override;

  private:
    void setHighlighted(bool highlighted);
    void showGlow();
    void fadeGlow();
    bool holdsFinger(const UITouches& touches, bool* inside) const;

    std::string _title;
    UIImageRef _image;
    UIFont _font = UIFont::systemFontOfSize(20);
    UIColor _tint = UIColor::white();
    std::function<void()> _action;
    bool _highlighted = false;
    /// The finger that presses; others are ignored meanwhile.
    std::optional<int64_t> _finger;
    /// The light over the content; made at the first press.
    std::shared_ptr<UIView> _glow;
};

/// A button to which keys and screen readers come one after the other; whoever draws it shows whether they
/// have.
class UIFocusableButton : public UIButton {
  public:
    bool isFocused() const override { return _isFocused; }
    void setFocused(bool focused);
    void accessibilityElementDidBecomeFocused() override { setFocused(true); }
    void accessibilityElementDidLoseFocus() override { setFocused(false); }

  private:
    bool _isFocused = false;
};

/// The place of the focused one in a list of them; nothing if none is.
template <typename Buttons>
std::optional<std::size_t> focusedIndex(const Buttons& buttons) {
    for (std::size_t index = 0; index < buttons.size(); ++index)
        if (buttons[index]->isFocused()) return index;
    return std::nullopt;
}

/// Takes the focus from whichever has it to that one.
template <typename Buttons>
void focusIndex(const Buttons& buttons, std::size_t index) {
    for (const auto& button : buttons)
        button->setFocused(button == buttons[index]);
}
