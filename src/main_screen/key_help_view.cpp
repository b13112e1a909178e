// The panel: a line for each command, its keys and what they do, made from the table of commands.
// Keys of one title share a line.
#include "main_screen/key_help_view.h"

#include <algorithm>
#include <string_view>

#include "main_screen/commands.h"

namespace {

constexpr CGFloat padding = 20;
constexpr CGFloat keysWidth = 92;
constexpr CGFloat titlesWidth = 232;
constexpr CGFloat roomyLine = 27;
constexpr CGFloat panelRadius = 14;
constexpr CGFloat fontSize = 16;
constexpr UIColor panelColor{0.07, 0.08, 0.11, 0.9};

std::shared_ptr<UILabel> makeLabel(const std::string& text, UIFont font) {
    auto label = std::make_shared<UILabel>();
    label->setFont(std::move(font));
    label->setText(text);
    label->setUserInteractionEnabled(false);
    return label;
}

}  // namespace

KeyHelpView::KeyHelpView(CGRect frame, std::function<void()> close)
    : UIView(frame), _close(std::move(close)), _panel(std::make_shared<UIView>()) {
    setAutoresizingMask(UIViewAutoresizingFlexibleWidth | UIViewAutoresizingFlexibleHeight);
    setAccessibilityLabel("Keys");
    _panel->setBackgroundColor(panelColor);
    _panel->setCornerRadius(panelRadius);
    _panel->setUserInteractionEnabled(false);

    const std::span<const Command> commands = mainScreenCommands();
    for (std::size_t i = 0; i < commands.size(); ++i) {
        std::string keys = commands[i].keyName;
        const char* title = commands[i].title;
        while (i + 1 < commands.size() && std::string_view(commands[i].title) == commands[i + 1].title) {
            const std::string_view another = commands[++i].keyName;
            if (!another.empty()) keys.append(", ").append(another);
        }
        addLine(keys, title);
    }
}

void KeyHelpView::addLine(const std::string& keys, const std::string& title) {
    _labels.push_back(makeLabel(keys, UIFont::boldSystemFontOfSize(fontSize)));
    _labels.push_back(makeLabel(title, UIFont::systemFontOfSize(fontSize)));
}

void KeyHelpView::layoutSubviews() {
    if (!_panel->superview()) {
        for (const auto& label : _labels)
            _panel->addSubview(label);
        addSubview(_panel);
    }
    const CGFloat width = padding + keysWidth + titlesWidth + padding;
    const std::size_t lineCount = _labels.size() / 2;
    const auto lines = static_cast<CGFloat>(lineCount);
    const CGFloat lineHeight = std::min(roomyLine, (bounds().size.height - 2 * padding) / lines);
    const CGFloat height = padding + lineHeight * lines + padding;
    _panel->setFrame(
        CGRectMake((bounds().size.width - width) / 2, (bounds().size.height - height) / 2, width, height));
    for (std::size_t i = 0; i < _labels.size(); ++i) {
        const bool isTitle = i % 2 == 1;
        const std::size_t line = i / 2;
        const CGFloat y = padding + lineHeight * static_cast<CGFloat>(line);
        _labels[i]->setFrame(CGRectMake(isTitle ? padding + keysWidth : padding, y,
                                        isTitle ? titlesWidth : keysWidth, lineHeight));
    }
}

void KeyHelpView::touchesEnded(const UITouches&, const UIEvent&) {
    // The closing takes this view out of the tree; the copy keeps what runs alive until it returns.
    const auto close = _close;
    close();
}
