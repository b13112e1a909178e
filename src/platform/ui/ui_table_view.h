// A list of rows in sections, each section on a card: rows are selected by finger, key and name.
// It holds all of its rows; they are few, and laid out together.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/ui/index_path.h"
#include "platform/ui/ui_scroll_view.h"
#include "platform/ui/ui_table_view_cell.h"

class UITableView;

class UITableViewDelegate {
  public:
    virtual ~UITableViewDelegate() = default;
    virtual void tableViewDidSelectRowAtIndexPath(UITableView& tableView, IndexPath indexPath) = 0;
};

struct UITableViewSection {
    std::string header;  ///< above the rows; empty for none
    std::vector<std::shared_ptr<UITableViewCell>> rows;
};

class UITableView : public UIScrollView {
  public:
    using UIScrollView::UIScrollView;

    void setDelegate(std::weak_ptr<UITableViewDelegate> delegate) { _delegate = std::move(delegate); }
    const std::vector<UITableViewSection>& sections() const { return _sections; }
    void setSections(std::vector<UITableViewSection> sections);
    /// Null for a row that there is not.
    std::shared_ptr<UITableViewCell> cellForRowAtIndexPath(IndexPath indexPath) const;
    std::optional<IndexPath> indexPathForSelectedRow() const { return _selected; }
    void deselectRowAtIndexPath(IndexPath indexPath, bool animated);
    /// As a tap on it: it is selected, and the delegate told.
    void activateRowAtIndexPath(IndexPath indexPath);

    /// The row that the keys have come to, which a ring shows.
    std::optional<IndexPath> focusedRow() const { return _focused; }
    void focusRow(std::optional<IndexPath> indexPath);
    /// Up, down and Tab go from row to row, Enter and Space select; without such rows all keys scroll.
    bool keyPressed(const HostKeyPress& press) override;
    void layoutSubviews() override;
    void touchesBegan(const UITouches& touches, const UIEvent& event) override;
    void touchesEnded(const UITouches& touches, const UIEvent& event) override;
    void touchesCancelled(const UITouches& touches, const UIEvent& event) override;

  protected:
    void willBeginDragging() override { release(); }

  private:
    /// What a section shows besides its rows.
    struct Dressing {
        std::shared_ptr<UILabel> header;
        std::shared_ptr<UIView> card;
        /// Above all rows but the first.
        std::vector<std::shared_ptr<UIView>> lines;
    };

    Dressing dress(const UITableViewSection& section);
    void listenTo(UITableViewCell& cell, IndexPath indexPath);
    CGFloat layOutLabel(const std::shared_ptr<UILabel>& label, CGFloat x, CGFloat y, CGFloat width);
    CGFloat layOutSection(std::size_t index, CGFloat x, CGFloat y, CGFloat width);
    void release();
    std::vector<IndexPath> selectableRows() const;
    bool moveFocus(const HostKeyPress& press, const std::vector<IndexPath>& rows);
    std::size_t rowAPageAway(const std::vector<IndexPath>& rows, std::size_t from, bool down) const;

    std::weak_ptr<UITableViewDelegate> _delegate;
    std::vector<UITableViewSection> _sections;
    std::vector<Dressing> _dressings;
    std::optional<IndexPath> _selected;
    std::optional<IndexPath> _focused;
    /// The finger on a row, and the row.
    std::optional<int64_t> _finger;
    std::optional<IndexPath> _pressed;
};
