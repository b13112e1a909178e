// Labels and image views.
// Each repaints only when what it shows has changed.
#include "platform/ui/ui_control.h"

#include <algorithm>
#include <utility>

#include "platform/ui/text_measure.h"

void UILabel::setText(std::string text) {
    if (text == _text) return;
    _text = std::move(text);
    setNeedsDisplay();
}

void UILabel::setFont(UIFont font) {
    _font = std::move(font);
    setNeedsDisplay();
}

void UILabel::setTextColor(UIColor color) {
    _textColor = color;
    setNeedsDisplay();
}

void UILabel::setTextAlignment(NSTextAlignment alignment) {
    _alignment = alignment;
    setNeedsDisplay();
}

void UILabel::setNumberOfLines(int lines) {
    _lines = lines;
    setNeedsDisplay();
}

void UILabel::sizeToFit() {
    const CGFloat limit = frame().size.width;
    CGSize size = measureText(_text, _font, _lines == 1 ? 0 : limit);
    if (limit > 0) size.width = std::min(size.width, limit);
    setFrame({frame().origin, size});
}

/// Text that is lower than the label stands in its middle, like the platform's.
void UILabel::drawRect(Canvas& canvas, CGRect bounds) {
    if (_text.empty()) return;
    const bool singleLine = _lines == 1;
    const CGFloat height = measureText(_text, _font, singleLine ? 0 : bounds.size.width).height;
    const CGFloat top = std::max((bounds.size.height - height) / 2, 0.0);
    canvas.drawText(_text, _font, _textColor,
                    {{0, top}, {bounds.size.width, std::max(height, bounds.size.height)}}, _alignment,
                    singleLine);
}

const std::string& UILabel::accessibilityLabel() const {
    const std::string& own = UIView::accessibilityLabel();
    return own.empty() ? _text : own;
}

void UIImageView::setImage(UIImageRef image) {
    _image = std::move(image);
    setNeedsDisplay();
}

void UIImageView::setTintColor(UIColor color) {
    _tint = color;
    setNeedsDisplay();
}

void UIImageView::setContentMode(UIViewContentMode mode) {
    _mode = mode;
    setNeedsDisplay();
}

void UIImageView::setLayer(const CALayer& layer) {
    if (layer == _layer) return;
    _layer = layer;
    setNeedsDisplay();
}

void UIImageView::drawRect(Canvas& canvas, CGRect bounds) {
    const UIBezierPath shape = UIBezierPath::bezierPathWithRoundedRect(bounds, _layer.cornerRadius);
    paintShadow(canvas, _layer, bounds);
    if (_layer.backgroundColor.alpha > 0) canvas.fillPath(shape, FillRule::nonZero, _layer.backgroundColor);
    if (!_image) return;
    CGRect place = bounds;
    if (_mode == UIViewContentMode::center) {
        const CGSize size = _image->size();
        place = {{CGRectGetMidX(bounds) - size.width / 2, CGRectGetMidY(bounds) - size.height / 2}, size};
    }
    if (_layer.masksToBounds) {
        canvas.save();
        canvas.clipToPath(shape, FillRule::nonZero);
    }
    canvas.drawImage(*_image, place, _tint);
    if (_layer.masksToBounds) canvas.restore();
}
