// The rows' places, and how they are pressed and reached.
// A finger that begins to scroll lets go of its row; one that stops a motion takes none.
#include "platform/ui/ui_table_view.h"

#include <algorithm>
#include <utility>

#include "platform/ui/text_measure.h"
#include "platform/ui/ui_layout_direction.h"

namespace {

constexpr CGFloat margin = 16;
constexpr CGFloat widestCard = 640;
constexpr CGFloat sectionGap = 22;
constexpr CGFloat labelInset = 16;
constexpr CGFloat labelGap = 7;
constexpr CGFloat cardRadius = 14;
constexpr CGFloat hairline = 0.5;
constexpr double labelSize = 13.5;
constexpr UIColor cardColor{0.13, 0.145, 0.2, 1};
constexpr UIColor lineColor = UIColor::white(1, 0.12);
constexpr UIColor labelColor = UIColor::white(0.66);

std::shared_ptr<UILabel> sectionLabel(const std::string& text) {
    if (text.empty()) return nullptr;
    auto label = std::make_shared<UILabel>();
    label->setText(text);
    label->setFont(UIFont::systemFontOfSize(labelSize));
    label->setTextColor(labelColor);
    label->setNumberOfLines(0);
    return label;
}

std::shared_ptr<UIView> plainView(UIColor color, CGFloat radius) {
    auto view = std::make_shared<UIView>();
    view->setBackgroundColor(color);
    view->setCornerRadius(radius);
    return view;
}

}  // namespace

void UITableView::setSections(std::vector<UITableViewSection> sections) {
    release();
    _selected = _focused = std::nullopt;
    while (!contentView()->subviews().empty())
        contentView()->subviews().back()->removeFromSuperview();
    _sections = std::move(sections);
    _dressings.clear();
    for (std::size_t i = 0; i < _sections.size(); ++i) {
        _dressings.push_back(dress(_sections[i]));
        for (std::size_t row = 0; row < _sections[i].rows.size(); ++row)
            listenTo(*_sections[i].rows[row], {i, row});
    }
    setNeedsLayout();
}

/// Puts the section's views in, in reading order.
UITableView::Dressing UITableView::dress(const UITableViewSection& section) {
    Dressing dressing{sectionLabel(section.header), plainView(cardColor, cardRadius), {}};
    contentView()->addSubview(dressing.header);
    contentView()->addSubview(dressing.card);
    for (const auto& row : section.rows) {
        if (row != section.rows.front()) {
            dressing.lines.push_back(plainView(lineColor, 0));
            contentView()->addSubview(dressing.lines.back());
        }
        contentView()->addSubview(row);
    }
    return dressing;
}

void UITableView::listenTo(UITableViewCell& cell, IndexPath indexPath) {
    const auto withTable = [life = weak_from_this()](const auto& call) {
        if (const auto self = std::static_pointer_cast<UITableView>(life.lock())) call(*self);
    };
    cell._tapped = [withTable, indexPath] {
        withTable([indexPath](UITableView& table) { table.activateRowAtIndexPath(indexPath); });
    };
    cell._left = [withTable] { withTable([](UITableView& table) { table.focusRow(std::nullopt); }); };
    cell._reached = [withTable, indexPath] {
        withTable([indexPath](UITableView& table) { table.focusRow(indexPath); });
    };
}

std::shared_ptr<UITableViewCell> UITableView::cellForRowAtIndexPath(IndexPath indexPath) const {
    if (indexPath.section >= _sections.size()) return nullptr;
    const auto& rows = _sections[indexPath.section].rows;
    return indexPath.row < rows.size() ? rows[indexPath.row] : nullptr;
}

void UITableView::deselectRowAtIndexPath(IndexPath indexPath, bool animated) {
    if (_selected == indexPath) _selected.reset();
    const auto cell = cellForRowAtIndexPath(indexPath);
    if (cell && cell->isSelected()) cell->setSelected(false, animated);
}

void UITableView::activateRowAtIndexPath(IndexPath indexPath) {
    const auto cell = cellForRowAtIndexPath(indexPath);
    if (!cell || !cell->isSelectable()) return;
    // What follows may let go of the table.
    const auto self = shared_from_this();
    if (_selected && _selected != indexPath) deselectRowAtIndexPath(*_selected, false);
    _selected = indexPath;
    cell->setSelected(true, false);
    if (const auto delegate = _delegate.lock()) delegate->tableViewDidSelectRowAtIndexPath(*this, indexPath);
    if (const auto action = cell->selectionAction()) action();
}

CGFloat UITableView::layOutLabel(const std::shared_ptr<UILabel>& label, CGFloat x, CGFloat y, CGFloat width) {
    if (!label) return 0;
    const CGFloat room = std::max(width - 2 * labelInset, 1.0);
    const CGFloat height = measureText(label->text(), label->font(), room).height;
    label->setFrame(CGRectMake(x + labelInset, y, room, height));
    label->setTextAlignment(userInterfaceLayoutDirection() == UIUserInterfaceLayoutDirection::rightToLeft
                                ? NSTextAlignment::right
                                : NSTextAlignment::left);
    return height + labelGap;
}

/// Answers where it ends.
CGFloat UITableView::layOutSection(std::size_t index, CGFloat x, CGFloat y, CGFloat width) {
    const Dressing& dressing = _dressings[index];
    const auto direction = userInterfaceLayoutDirection();
    y += layOutLabel(dressing.header, x, y, width);
    const CGFloat top = y;
    const auto& rows = _sections[index].rows;
    for (std::size_t row = 0; row < rows.size(); ++row) {
        const CGFloat height = rows[row]->heightForWidth(width);
        rows[row]->setFrame(CGRectMake(x, y, width, height));
        if (row > 0) {
            const CGFloat inset = rows[row]->textInset();
            CGRect line = directed(CGRectMake(inset, y, width - inset, hairline), width, direction);
            line.origin.x += x;
            dressing.lines[row - 1]->setFrame(line);
        }
        y += height;
    }
    dressing.card->setFrame(CGRectMake(x, top, width, y - top));
    return y;
}

void UITableView::layoutSubviews() {
    const UIEdgeInsets insets = safeAreaInsets();
    const CGFloat room = std::max(bounds().size.width - insets.left - insets.right - 2 * margin, 1.0);
    const CGFloat width = std::min(room, widestCard);
    const CGFloat x = insets.left + margin + (room - width) / 2;
    CGFloat y = margin;
    for (std::size_t i = 0; i < _sections.size(); ++i)
        y = layOutSection(i, x, y, width) + sectionGap;
    setIndicatorInset(insets.right);
    setContentHeight(y - sectionGap + margin + insets.bottom);
}

void UITableView::touchesBegan(const UITouches& touches, const UIEvent& event) {
    UIScrollView::touchesBegan(touches, event);
    focusRow(std::nullopt);
    if (hasCaughtMotion() || _finger || touches.empty()) return;
    const auto hit = touches.front()->view.lock();
    for (std::size_t i = 0; i < _sections.size(); ++i) {
        const auto& rows = _sections[i].rows;
        const auto found = std::find(rows.begin(), rows.end(), hit);
        if (found == rows.end() || !(*found)->isSelectable()) continue;
        _finger = touches.front()->id;
        _pressed = IndexPath{i, static_cast<std::size_t>(found - rows.begin())};
        (*found)->setHighlighted(true);
    }
}

void UITableView::touchesEnded(const UITouches& touches, const UIEvent& event) {
    UIScrollView::touchesEnded(touches, event);
    const auto isPressing = [this](const auto& touch) { return touch->id == _finger; };
    if (std::none_of(touches.begin(), touches.end(), isPressing)) return;
    const auto pressed = _pressed;
    release();
    if (pressed) activateRowAtIndexPath(*pressed);
}

void UITableView::touchesCancelled(const UITouches& touches, const UIEvent& event) {
    UIScrollView::touchesCancelled(touches, event);
    release();
}

void UITableView::release() {
    _finger.reset();
    const auto pressed = std::exchange(_pressed, std::nullopt);
    if (const auto cell = pressed ? cellForRowAtIndexPath(*pressed) : nullptr) cell->setHighlighted(false);
}
