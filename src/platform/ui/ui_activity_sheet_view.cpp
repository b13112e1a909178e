// The sheet's parts and their places: a head with the picture, the grid in rows, the line below.
// Rows are as long as the sheet is wide, so that the same view serves phones and popovers.
#include "platform/ui/ui_activity_sheet_view.h"

#include <algorithm>
#include <utility>

#include "platform/ui/ui_activity_cell.h"
#include "platform/ui/ui_device.h"

namespace {

constexpr CGFloat padding = 16;
constexpr CGFloat previewHeight = 54;
constexpr CGFloat previewWidth = 72;
constexpr CGFloat previewRadius = 8;
constexpr CGFloat headHeight = padding + previewHeight + 14;
constexpr CGFloat closeSize = 40;
constexpr CGFloat messageHeight = 34;
constexpr CGFloat groundRadius = 18;
constexpr std::size_t columnsOfPopovers = 4;
constexpr std::size_t columnsOfPhones = 6;
constexpr UIColor groundColor{0.11, 0.12, 0.16, 0.98};
constexpr UIColor lineColor = UIColor::white(1, 0.1);
constexpr UIColor faintColor = UIColor::white(0.66);
constexpr UIColor successColor{0.45, 0.86, 0.6, 1};
constexpr UIColor mistakeColor{1, 0.55, 0.5, 1};
constexpr const char* nothingHere = "Nothing on this machine can share.";

/// The picture, cut to a card.
class PreviewView : public UIView {
  public:
    explicit PreviewView(UIImageRef image) : _image(std::move(image)) { setUserInteractionEnabled(false); }
    void drawRect(Canvas& canvas, CGRect bounds) override {
        const CGSize size = _image->size();
        const CGFloat scale = std::max(bounds.size.width / size.width, bounds.size.height / size.height);
        const CGSize shown{size.width * scale, size.height * scale};
        canvas.save();
        canvas.clipToPath(UIBezierPath::bezierPathWithRoundedRect(bounds, previewRadius), FillRule::nonZero);
        canvas.drawImage(
            *_image,
            {{(bounds.size.width - shown.width) / 2, (bounds.size.height - shown.height) / 2}, shown},
            UIColor::white());
        canvas.restore();
    }

  private:
    UIImageRef _image;
};

UIImageRef crossImage() {
    VectorGlyph glyph;
    glyph.size = {24, 24};
    if (auto path = UIBezierPath::pathWithSVGData("M7.5 7.5l9 9M16.5 7.500l-9 9"))
        glyph.shapes.push_back({std::move(*path), true, 1.75, FillRule::nonZero});
    return UIImage::imageWithGlyph(std::move(glyph), {24, 24});
}

}  // namespace

UIActivitySheetView::UIActivitySheetView(const SharedContent& content,
                                         const std::vector<ShareDestination>& destinations,
                                         const Choose& choose, const std::function<void()>& close) {
    _title->setText(content.subject);
    _title->setFont(UIFont::boldSystemFontOfSize(16));
    _link->setText(content.file.empty() ? content.link : content.file.substr(content.file.rfind('/') + 1));
    _link->setFont(UIFont::systemFontOfSize(12.5));
    _link->setTextColor(faintColor);
    _closeButton->setImage(crossImage());
    _closeButton->setTintColor(faintColor);
    _closeButton->setAccessibilityLabel("Close");
    _closeButton->setAction(close);
    _message->setFont(UIFont::systemFontOfSize(13.5));
    _message->setTextAlignment(NSTextAlignment::center);
    if (content.image && content.image->image()) {
        _preview = std::make_shared<PreviewView>(content.image);
    }
    for (const ShareDestination& one : destinations) {
        auto cell = std::make_shared<UIActivityCell>(one);
        cell->setAction([choose, one] { choose(one); });
        _cells.push_back(std::move(cell));
    }
    say(_cells.empty() ? nothingHere : "", Tone::plain);
}

std::size_t UIActivitySheetView::columns() const {
    const bool isPhone = UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::phone;
    return isPhone ? columnsOfPhones : columnsOfPopovers;
}

CGSize UIActivitySheetView::sizeThatFits() const {
    const std::size_t rows = (_cells.size() + columns() - 1) / columns();
    const CGFloat width = 2 * padding + UIActivityCell::size.width * static_cast<CGFloat>(columns());
    const CGFloat grid = UIActivityCell::size.height * static_cast<CGFloat>(rows);
    return {width, headHeight + padding / 2 + grid + messageHeight};
}

void UIActivitySheetView::setDrawsGround(bool drawsGround) {
    _drawsGround = drawsGround;
    setNeedsDisplay();
}

void UIActivitySheetView::say(const std::string& message, Tone tone) {
    _message->setTextColor(tone == Tone::success   ? successColor
                           : tone == Tone::mistake ? mistakeColor
                                                   : faintColor);
    _message->setText(message);
}

void UIActivitySheetView::layoutSubviews() {
    if (subviews().empty()) {
        if (_preview) addSubview(_preview);
        addSubview(_title);
        addSubview(_link);
        addSubview(_closeButton);
        for (const auto& cell : _cells)
            addSubview(cell);
        addSubview(_message);
    }
    const CGFloat width = bounds().size.width;
    const CGFloat textX = padding + (_preview ? previewWidth + 12 : 0);
    const CGFloat textWidth = width - textX - closeSize - padding;
    if (_preview) _preview->setFrame(CGRectMake(padding, padding, previewWidth, previewHeight));
    _title->setFrame(CGRectMake(textX, padding + 4, textWidth, 24));
    _link->setFrame(CGRectMake(textX, padding + 29, textWidth, 20));
    _closeButton->setFrame(CGRectMake(width - closeSize - 8, 8, closeSize, closeSize));

    const CGFloat cellWidth = (width - 2 * padding) / static_cast<CGFloat>(columns());
    for (std::size_t i = 0; i < _cells.size(); ++i) {
        const auto column = static_cast<CGFloat>(i % columns());
        const std::size_t rowsAbove = i / columns();
        const auto row = static_cast<CGFloat>(rowsAbove);
        _cells[i]->setFrame(CGRectMake(padding + cellWidth * column,
                                       headHeight + padding / 2 + UIActivityCell::size.height * row,
                                       cellWidth, UIActivityCell::size.height));
    }
    const CGFloat bottom = bounds().size.height - safeAreaInsets().bottom;
    _message->setFrame(CGRectMake(padding, bottom - messageHeight, width - 2 * padding, 22));
}

void UIActivitySheetView::drawRect(Canvas& canvas, CGRect bounds) {
    // Its lower corners lie below the screen's edge.
    const CGRect ground =
        CGRectMake(0, 0, bounds.size.width, bounds.size.height + (_drawsGround ? groundRadius : 0));
    canvas.fillPath(UIBezierPath::bezierPathWithRoundedRect(ground, groundRadius), FillRule::nonZero,
                    groundColor);
    canvas.fillRect(CGRectMake(padding, headHeight, bounds.size.width - 2 * padding, 1), lineColor);
}

void UIActivitySheetView::focus(std::ptrdiff_t step) {
    if (_cells.empty()) return;
    const auto last = static_cast<std::ptrdiff_t>(_cells.size()) - 1;
    const auto focused = focusedIndex(_cells);
    const auto next = focused
                          ? std::clamp(static_cast<std::ptrdiff_t>(*focused) + step, std::ptrdiff_t{0}, last)
                          : std::ptrdiff_t{0};
    focusIndex(_cells, static_cast<std::size_t>(next));
}

bool UIActivitySheetView::keyPressed(const HostKeyPress& press) {
    const auto row = static_cast<std::ptrdiff_t>(columns());
    switch (press.key) {
        case HostKey::left:
            focus(-1);
            return true;
        case HostKey::right:
        case HostKey::tab:
            focus(1);
            return true;
        case HostKey::up:
            focus(-row);
            return true;
        case HostKey::down:
            focus(row);
            return true;
        case HostKey::returnKey:
        case HostKey::space:
            if (const auto focused = focusedIndex(_cells); focused && !press.repeated)
                _cells[*focused]->accessibilityActivate();
            return true;
        default:
            return false;
    }
}
