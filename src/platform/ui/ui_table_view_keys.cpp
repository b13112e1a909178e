// Rows by keys: one of them has a ring around it, and is in sight.
// Screen readers move the same ring.
#include <algorithm>
#include <cmath>

#include "platform/ui/ui_table_view.h"

namespace {

constexpr CGFloat sightMargin = 12;

}  // namespace

void UITableView::focusRow(std::optional<IndexPath> indexPath) {
    const auto asked = indexPath ? cellForRowAtIndexPath(*indexPath) : nullptr;
    if (!asked || !asked->isSelectable()) indexPath.reset();
    if (indexPath == _focused) return;
    if (const auto former = _focused ? cellForRowAtIndexPath(*_focused) : nullptr) former->setFocused(false);
    _focused = indexPath;
    const auto cell = indexPath ? cellForRowAtIndexPath(*indexPath) : nullptr;
    if (!cell) return;
    cell->setFocused(true);
    CGRect place = CGRectInset(cell->frame(), 0, -sightMargin);
    const std::vector<IndexPath> rows = selectableRows();
    // With the first and the last row, what stands before and behind them shows too.
    if (rows.front() == *indexPath) place = CGRectUnion(place, CGRectMake(0, 0, 1, 1));
    if (rows.back() == *indexPath) place = CGRectUnion(place, CGRectMake(0, contentSize().height - 1, 1, 1));
    if (place.size.height > bounds().size.height) place = cell->frame();
    scrollRectToVisible(place, true);
}

std::vector<IndexPath> UITableView::selectableRows() const {
    std::vector<IndexPath> found;
    for (std::size_t i = 0; i < _sections.size(); ++i) {
        for (std::size_t row = 0; row < _sections[i].rows.size(); ++row)
            if (_sections[i].rows[row]->isSelectable()) found.push_back({i, row});
    }
    return found;
}

std::size_t UITableView::rowAPageAway(const std::vector<IndexPath>& rows, std::size_t from, bool down) const {
    const CGFloat start = cellForRowAtIndexPath(rows[from])->frame().origin.y;
    std::size_t row = from;
    const auto isNear = [&](std::size_t other) {
        const CGRect place = cellForRowAtIndexPath(rows[other])->frame();
        return std::abs(place.origin.y - start) + place.size.height <= bounds().size.height;
    };
    const std::size_t last = rows.size() - 1;
    const auto next = [&] { return down ? std::min(row + 1, last) : row - (row > 0 ? 1 : 0); };
    while (next() != row && isNear(next()))
        row = next();
    return row == from ? next() : row;
}

bool UITableView::moveFocus(const HostKeyPress& press, const std::vector<IndexPath>& rows) {
    const auto found = _focused ? std::find(rows.begin(), rows.end(), *_focused) : rows.end();
    const bool isNew = found == rows.end();
    const std::size_t last = rows.size() - 1;
    const std::size_t at = isNew ? 0 : static_cast<std::size_t>(found - rows.begin());
    std::size_t next = at;
    switch (press.key) {
        case HostKey::up:
            next = isNew ? last : at - (at > 0 ? 1 : 0);
            break;
        case HostKey::down:
            next = isNew ? 0 : std::min(at + 1, last);
            break;
        case HostKey::tab:
            next = isNew || at == last ? 0 : at + 1;
            break;
        case HostKey::home:
            next = 0;
            break;
        case HostKey::end:
            next = last;
            break;
        case HostKey::pageUp:
        case HostKey::pageDown:
            next = rowAPageAway(rows, at, press.key == HostKey::pageDown);
            break;
        default:
            return false;
    }
    focusRow(rows[next]);
    return true;
}

bool UITableView::keyPressed(const HostKeyPress& press) {
    if (press.control) return false;
    const std::vector<IndexPath> rows = selectableRows();
    if (rows.empty()) return UIScrollView::keyPressed(press);
    if (moveFocus(press, rows)) return true;
    if (press.key != HostKey::returnKey && press.key != HostKey::space) return false;
    if (_focused && !press.repeated) activateRowAtIndexPath(*_focused);
    return true;
}
