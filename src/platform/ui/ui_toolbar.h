// A bar of buttons along an edge of the screen, laid out from a list of items.
// Items are plain objects that outlive their buttons: titles and actions change while the bar is laid out
// anew.
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_control.h"

class UIBarButtonItem : public KeyValueCoding, public std::enable_shared_from_this<UIBarButtonItem> {
  public:
    using Action = std::function<void(const std::shared_ptr<UIBarButtonItem>& sender)>;

    const std::string& title() const { return _title; }
    void setTitle(std::string title);
    const UIImageRef& image() const { return _image; }
    void setImage(UIImageRef image);
    /// Draws this title, a symbol, as an image in the place of the item's own image and the text: it then
    /// looks the same whatever fonts a host has.
    void setImageForTitle(const std::string& title, UIImageRef image);
    const std::string& accessibilityLabel() const { return _accessibilityLabel; }
    void setAccessibilityLabel(std::string label);
    bool isFlexibleSpace() const { return _flexibleSpace; }
    void setFlexibleSpace(bool flexible) { _flexibleSpace = flexible; }
    void setAction(Action action) { _action = std::move(action); }
    /// What a tap does: the button lights up, the action runs.
    void sendAction();
    /// The button that stands for the item while it is in a toolbar; also by name ("view").
    std::shared_ptr<UIView> view() const { return _view.lock(); }
    void setView(const std::shared_ptr<UIView>& view) { _view = view; }

  protected:
    KeyValueTable makeKeyValueTable() override;  // "view" ("@", std::shared_ptr<UIView>), "title"

  private:
    friend class UIToolbar;
    std::shared_ptr<UIButton> button() const;
    /// Shows title and image on the button.
    void dress(UIButton& button) const;
    void appearanceChanged();

    std::string _title;
    UIImageRef _image;
    std::map<std::string, UIImageRef> _titleImages;
    std::string _accessibilityLabel;
    bool _flexibleSpace = false;
    Action _action;
    std::weak_ptr<UIView> _view;
};

class UIToolbar : public UIView {
  public:
    using Items = std::vector<std::shared_ptr<UIBarButtonItem>>;

    using UIView::UIView;
    const Items& items() const { return _items; }
    void setItems(Items items);
    /// Points; on a wider bar the plate with the buttons stands in the middle, and what is beside it neither
    /// shows nor answers touches. 0 for no limit.
    void setMaximumWidth(CGFloat width);
    /// Puts the buttons side by side, each over the bar's whole height. Flexible spaces share what is left;
    /// without any, what is left is spread evenly between and around the buttons. On a bar too narrow for
    /// that, first the gaps, then the margins, then the buttons shrink, so that nothing overlaps or sticks
    /// out.
    void layoutSubviews() override;
    void drawRect(Canvas& canvas, CGRect bounds) override;
    bool drawsContent() const override { return true; }
    bool swallowsTouches() const override { return true; }
    bool pointInside(CGPoint p) const override { return CGRectContainsPoint(backgroundArea(bounds()), p); }

  protected:
    CGRect backgroundArea(CGRect bounds) const override;

  private:
    std::shared_ptr<UIButton> makeButton(const std::shared_ptr<UIBarButtonItem>& item) const;

    Items _items;
    CGFloat _maximumWidth = 0;
};
