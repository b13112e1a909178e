// Writing the list. Each operation is its number, then what it needs, in the order in which the player reads
// it. The player, display_list_player.cpp, knows operations, verbs and fill rules by the numbers given here.
#include "hosts/web/display_list.h"

#include <cstdint>

#include "hosts/web/web_text.h"

enum class DisplayList::Operation {
    save,
    restore,
    translate,
    scale,
    clip,
    beginLayer,
    endLayer,
    clearRect,
    fillRect,
    fill,
    stroke,
    drawPicture,
    drawText
};

void DisplayList::clear() {
    _numbers.clear();
    _texts.clear();
    _pictures.clear();
}

void DisplayList::add(Operation operation) {
    _numbers.push_back(static_cast<double>(operation));
}

void DisplayList::add(CGRect rect) {
    _numbers.insert(_numbers.end(), {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height});
}

void DisplayList::add(UIColor color) {
    _numbers.insert(_numbers.end(), {color.red, color.green, color.blue, color.alpha});
}

void DisplayList::add(FillRule rule) {
    _numbers.push_back(rule == FillRule::evenOdd ? 1 : 0);
}

/// How many numbers follow; then each verb and its points.
void DisplayList::add(const UIBezierPath& path) {
    const std::size_t countAt = _numbers.size();
    _numbers.push_back(0);
    for (const UIBezierPath::Element& element : path.elements()) {
        const auto& p = element.points;
        switch (element.verb) {
            case UIBezierPath::Verb::move:
                _numbers.insert(_numbers.end(), {0, p[2].x, p[2].y});
                break;
            case UIBezierPath::Verb::line:
                _numbers.insert(_numbers.end(), {1, p[2].x, p[2].y});
                break;
            case UIBezierPath::Verb::curve:
                _numbers.insert(_numbers.end(), {2, p[0].x, p[0].y, p[1].x, p[1].y, p[2].x, p[2].y});
                break;
            case UIBezierPath::Verb::close:
                _numbers.push_back(3);
                break;
        }
    }
    _numbers[countAt] = static_cast<double>(_numbers.size() - countAt - 1);
}

void DisplayList::add(const std::string& text) {
    _numbers.insert(_numbers.end(), {static_cast<double>(_texts.size()), static_cast<double>(text.size())});
    _texts += text;
}

void DisplayList::save() {
    add(Operation::save);
}

void DisplayList::restore() {
    add(Operation::restore);
}

void DisplayList::translate(CGFloat dx, CGFloat dy) {
    add(Operation::translate);
    _numbers.insert(_numbers.end(), {dx, dy});
}

void DisplayList::scale(CGFloat sx, CGFloat sy) {
    add(Operation::scale);
    _numbers.insert(_numbers.end(), {sx, sy});
}

void DisplayList::clip(const UIBezierPath& path, FillRule rule) {
    add(Operation::clip);
    add(path);
    add(rule);
}

void DisplayList::beginLayer() {
    add(Operation::beginLayer);
}

void DisplayList::endLayer(double alpha) {
    add(Operation::endLayer);
    _numbers.push_back(alpha);
}

void DisplayList::clearRect(CGRect rect) {
    add(Operation::clearRect);
    add(rect);
}

void DisplayList::fillRect(CGRect rect, UIColor color) {
    add(Operation::fillRect);
    add(rect);
    add(color);
}

void DisplayList::fill(const UIBezierPath& path, FillRule rule, UIColor color) {
    add(Operation::fill);
    add(path);
    add(color);
    add(rule);
}

void DisplayList::stroke(const UIBezierPath& path, CGFloat lineWidth, UIColor color) {
    add(Operation::stroke);
    add(path);
    add(color);
    _numbers.push_back(lineWidth);
}

void DisplayList::drawPicture(const CGImage& image, CGRect rect) {
    _pictures.push_back(image.rgbaBytes());
    add(Operation::drawPicture);
    _numbers.insert(_numbers.end(),
                    {static_cast<double>(reinterpret_cast<uintptr_t>(_pictures.back().data())),
                     static_cast<double>(image.width()), static_cast<double>(image.height())});
    add(rect);
}

void DisplayList::drawText(const std::string& text, const UIFont& font, UIColor color, CGRect rect,
                           NSTextAlignment alignment, bool singleLine) {
    add(Operation::drawText);
    add(text);
    add(WebText::familyList(font));
    _numbers.insert(_numbers.end(), {font.pointSize, font.bold ? 1.0 : 0.0});
    add(color);
    // The alignment as a share of the free room, in halves.
    const double halves = alignment == NSTextAlignment::left     ? 0
                          : alignment == NSTextAlignment::center ? 1
                                                                 : 2;
    _numbers.insert(_numbers.end(),
                    {rect.origin.x, rect.origin.y, rect.size.width, halves, singleLine ? 1.0 : 0.0});
}
