// The panel: one column of keys, one of what they do, made from the table of commands.
// An action's second key shares the first one's line.
#include "main_screen/key_help_view.h"

#include <algorithm>
#include <string>

#include "main_screen/commands.h"

namespace {

constexpr CGFloat padding = 20;
constexpr CGFloat columnGap = 24;
constexpr CGFloat keysWidth = 84;
constexpr CGFloat titlesWidth = 240;
constexpr CGFloat panelRadius = 14;
constexpr CGFloat fontSize = 16;
constexpr UIColor panelColor{0.07, 0.08, 0.11, 0.9};

/// The two columns, line by line.
void listCommands(std::string& keys, std::string& titles) {
    const Command* former = nullptr;
    for (const Command& command : mainScreenCommands()) {
        if (former && std::string_view(former->action) == command.action) {
            keys += std::string(", ") + command.keyName;
            continue;
        }
        keys += (former ? "\n" : "") + std::string(command.keyName);
        titles += (former ? "\n" : "") + std::string(command.title);
        former = &command;
    }
}

std::shared_ptr<UILabel> makeColumn(const std::string& text, CGFloat width, bool bold) {
    auto label = std::make_shared<UILabel>(CGRectMake(0, 0, width, 0));
    label->setNumberOfLines(0);
    label->setFont(bold ? UIFont::boldSystemFontOfSize(fontSize) : UIFont::systemFontOfSize(fontSize));
    label->setText(text);
    label->setUserInteractionEnabled(false);
    label->sizeToFit();
    return label;
}

}  // namespace

KeyHelpView::KeyHelpView(CGRect frame, std::function<void()> close)
    : UIView(frame), _close(std::move(close)), _panel(std::make_shared<UIView>()) {
    std::string keys;
    std::string titles;
    listCommands(keys, titles);
    _keys = makeColumn(keys, keysWidth, true);
    _titles = makeColumn(titles, titlesWidth, false);
    setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setAccessibilityLabel("Keys");
    _panel->setBackgroundColor(panelColor);
    _panel->setCornerRadius(panelRadius);
    _panel->setUserInteractionEnabled(false);
}

void KeyHelpView::layoutSubviews() {
    if (!_panel->superview()) {
        _panel->addSubview(_keys);
        _panel->addSubview(_titles);
        addSubview(_panel);
    }
    const CGSize keys = _keys->frame().size;
    const CGSize titles = _titles->frame().size;
    const CGFloat width = padding + keysWidth + columnGap + titles.width + padding;
    const CGFloat height = padding + std::max(keys.height, titles.height) + padding;
    _panel->setFrame(
        CGRectMake((bounds().size.width - width) / 2, (bounds().size.height - height) / 2, width, height));
    _keys->setFrame({{padding, padding}, keys});
    _titles->setFrame({{padding + keysWidth + columnGap, padding}, titles});
}

void KeyHelpView::touchesEnded(const UITouches&, const UIEvent&) {
    // The closing takes this view out of the tree; the copy keeps what runs alive until it returns.
    const auto close = _close;
    close();
}
