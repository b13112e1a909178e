// A screen's layout as data: "NAME.storyboard.json" among the resources says which views a controller has,
// where, with which outlets and actions. Classes are found by the names under which the app registered them.
//
//     { "initialController": { "class": NAME, "view": VIEW } }
//
// VIEW, an object; what is not marked so may be left out:
//     "class"               required: "UIView", "UILabel", "UIButton", "UIImageView", "UIToolbar" or one of
//                           the app's own
//     "frame"               required: [x, y, width, height], points in the superview; the root's gives the
//                           size for which everything was laid out, the real size then reaches the views
//                           through "autoresizing"
//     "autoresizing"        what gives way: a list of "left", "width", "right", "top", "height", "bottom"
//     "alpha"               0 to 1
//     "hidden"              true or false
//     "backgroundColor"     COLOR: "#RRGGBB" or "#RRGGBBAA"
//     "cornerRadius"        points
//     "accessibilityLabel"  text
//     "outlet"              the controller's property that receives the view, as std::shared_ptr<UIView>
//     "subviews"            a list of VIEW, back to front
//     "items"               toolbars only: a list of ITEM in order
//     "tintColor"           toolbars only: COLOR of the items
//     "maximumWidth"        toolbars only: points, see UIToolbar::setMaximumWidth
//
// ITEM: { "space": "flexible" }, or an object with
//     "title", "accessibilityLabel"  texts
//     "titleIcons"          { TITLE: ICON... }: while the title is one of these symbols, it is drawn
//     "icon"                ICON
//     "outlet"              the property that receives the item, as std::shared_ptr<UIBarButtonItem>
//     "action"              the name handed to the controller's performAction
//
// ICON: { "strokes": [PATH...], "fills": [PATH...], "lineWidth": W }: SVG path data on a grid of 24 units,
// shown at 24 points; fills are even-odd
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

#include "platform/ui/ui_view_controller.h"

class UIStoryboard {
  public:
    using ControllerMaker = std::function<std::shared_ptr<UIViewController>()>;
    using ViewMaker = std::function<std::shared_ptr<UIView>()>;

    explicit UIStoryboard(std::string name);
    void registerController(const std::string& className, ControllerMaker maker);
    void registerView(const std::string& className, ViewMaker maker);

    /// Makes the initial controller with its view tree of the given size, outlets set by name through
    /// key-value access, item actions bound to performAction. Nothing, with one log line that says where, if
    /// the resource is missing or malformed or names an unknown class; an unknown outlet is logged and
    /// skipped.
    std::shared_ptr<UIViewController> instantiateInitialViewController(CGSize size);

  private:
    std::string _name;
    std::map<std::string, ControllerMaker> _controllers;
    std::map<std::string, ViewMaker> _views;
};
