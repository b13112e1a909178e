// A row of a table: an icon, one text or two, and a mark at the end that says that more follows.
// It is as high as its texts need at the width that it gets.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/ui/ui_control.h"

enum class UITableViewCellAccessoryType { none, disclosureIndicator };
enum class UITableViewCellSelectionStyle { none, standard };

class UITableViewCell : public UIView {
  public:
    UITableViewCell();

    /// For who made the cell.
    int64_t tag() const { return _tag; }
    void setTag(int64_t tag) { _tag = tag; }
    const std::shared_ptr<UIImageView>& imageView() const { return _imageView; }
    const std::shared_ptr<UILabel>& textLabel() const { return _textLabel; }
    const std::shared_ptr<UILabel>& detailTextLabel() const { return _detailTextLabel; }
    void setAccessoryType(UITableViewCellAccessoryType type);
    /// none: taps do nothing, and nobody comes here by key.
    void setSelectionStyle(UITableViewCellSelectionStyle style) { _selectionStyle = style; }
    bool isSelectable() const { return _selectionStyle != UITableViewCellSelectionStyle::none; }
    /// What else follows when the row is selected, after the table's delegate was told.
    void setSelectionAction(std::function<void()> action) { _selectionAction = std::move(action); }
    const std::function<void()>& selectionAction() const { return _selectionAction; }

    /// It was made from a storyboard and has all that it says.
    virtual void awakeFromNib() {}
    bool isSelected() const { return _isSelected; }
    virtual void setSelected(bool selected, bool animated);
    /// A finger lies on it, for long enough not to be on its way.
    void setHighlighted(bool highlighted);
    bool isHighlighted() const { return _isHighlighted; }
    /// The keys have come to it: a ring shows.
    void setFocused(bool focused);
    bool isFocused() const override { return _isFocused; }

    /// Points, at a width.
    CGFloat heightForWidth(CGFloat width) const;
    /// Where texts begin, from the edge at which rows begin.
    CGFloat textInset() const;
    void layoutSubviews() override;
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return true; }
    /// Both texts, unless it was given another.
    const std::string& accessibilityLabel() const override;
    UIAccessibilityTraits accessibilityTraits() const override {
        return isSelectable() ? UIAccessibilityTraitButton : UIAccessibilityTraitNone;
    }
    bool isAccessibilityElement() const override { return isSelectable(); }
    bool accessibilityActivate() override;
    void accessibilityElementDidBecomeFocused() override;
    void accessibilityElementDidLoseFocus() override;

  private:
    friend class UITableView;
    CGFloat textWidth(CGFloat width) const;
    void light(bool lit, double delay, double seconds);

    int64_t _tag = 0;
    std::shared_ptr<UIView> _light = std::make_shared<UIView>();
    std::shared_ptr<UIImageView> _imageView = std::make_shared<UIImageView>();
    std::shared_ptr<UILabel> _textLabel = std::make_shared<UILabel>();
    std::shared_ptr<UILabel> _detailTextLabel = std::make_shared<UILabel>();
    UITableViewCellAccessoryType _accessoryType = UITableViewCellAccessoryType::none;
    UITableViewCellSelectionStyle _selectionStyle = UITableViewCellSelectionStyle::standard;
    std::function<void()> _selectionAction;
    bool _isSelected = false;
    bool _isHighlighted = false;
    bool _isFocused = false;
    /// Both texts; made when they are asked for.
    mutable std::string _label;
    /// The table's.
    std::function<void()> _tapped;
    std::function<void()> _reached;
    std::function<void()> _left;
};
