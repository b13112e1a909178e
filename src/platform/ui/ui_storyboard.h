// A screen's layout as data: "NAME.storyboard.json" among the resources says which views a controller has,
// where, with which outlets and actions. Classes are found by the names under which the app registered them.
//
//     { "initialController": SCENE, "scenes": { NAME: SCENE... } }
//
// SCENE, an object:
//     "class"     required: "UITableViewController", "UINavigationController" or one of the app's own
//     "view"      VIEW; required but for navigation controllers
//     "root"      navigation controllers only, required: the name of the scene that they begin with
//     "titleKey"  KEY of the title
//     "segues"    a list of SEGUE
//
// KEY: the text under this key in the user's language; "{NAME}" in it, and in "text" and "detail", stands for
// the value of that name that the app has given (setValue)
//
// SEGUE, an object: a way that performSegueWithIdentifier goes
//     "identifier"  required
//     "kind"        required: "present", "push" (within a navigation controller) or "unwind"
//     "scene"       to a scene of this file
//     "storyboard"  instead of "scene": to the initial controller of another file; "{NAME}" as above
//     "action"      unwind only: to the nearest screen below with this action
//
// VIEW, an object; what is not marked so may be left out:
//     "class"               required: "UIView", "UIToolbar", "UITableView" or one of the app's own
//     "frame"               required: [x, y, width, height], points in the superview; the root's gives the
//                           size for which everything was laid out, the real size then reaches the views
//                           through "autoresizing"
//     "autoresizing"        what gives way: a list of "left", "width", "right", "top", "height", "bottom"
//     "alpha"               0 to 1
//     "backgroundColor"     COLOR: "#RRGGBB" or "#RRGGBBAA"
//     "cornerRadius"        points
//     "accessibilityLabel"  text
//     "outlet"              the controller's property that receives the view, as std::shared_ptr<UIView>
//     "subviews"            a list of VIEW, back to front
//     "items"               toolbars only: a list of ITEM in order
//     "maximumWidth"        toolbars only: points, see UIToolbar::setMaximumWidth
//     "sections"            tables only: a list of SECTION
//
// SECTION: { "headerKey": KEY, "rows": [CELL...] }; left out if none of its rows is there
//
// CELL, an object:
//     "class"       required: "UITableViewCell" or one of the app's own
//     "tag"         a whole number, else 0
//     "text"        a text as it is; or instead "textKey": KEY
//     "detail"      a smaller text below; or instead "detailKey": KEY
//     "icon"        ICON
//     "iconColor"   COLOR of the ground below it
//     "accessory"   "disclosure": a chevron at the end
//     "selectable"  false for a row that only tells something
//     "segue"       performed when the row was selected
//     "requires"    a feature (addFeature) without which the row is left out
//
// ITEM: { "space": "flexible" }, or an object with
//     "title", "accessibilityLabel"  texts
//     "titleIcons"          { TITLE: ICON... }: while the title is one of these symbols, it is drawn
//     "icon"                ICON
//     "outlet"              the property that receives the item, as std::shared_ptr<UIBarButtonItem>
//     "action"              the name handed to the controller's performAction
//     "segue"               instead of "action": performed by a tap
//
// ICON: { "strokes": [PATH...], "fills": [PATH...], "lineWidth": W }: SVG path data on a grid of 24 units,
// shown at 24 points; fills are even-odd
#pragma once

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>

#include "platform/ui/ui_view_controller.h"

struct StoryboardNode;

class UIStoryboard {
  public:
    using ControllerMaker = std::function<std::shared_ptr<UIViewController>()>;
    using ViewMaker = std::function<std::shared_ptr<UIView>()>;

    /// What files may name.
    struct Registry {
        std::map<std::string, ControllerMaker> controllers;
        std::map<std::string, ViewMaker> views;
        std::map<std::string, std::string> values;
        std::set<std::string> features;
    };

    explicit UIStoryboard(std::string name);
    void registerController(const std::string& className, ControllerMaker maker);
    void registerView(const std::string& className, ViewMaker maker);
    /// What "{NAME}" stands for in texts.
    void setValue(const std::string& name, std::string value) { _registry.values[name] = std::move(value); }
    /// Another file, with the same classes, values and features.
    UIStoryboard storyboardWithName(std::string name) const;
    void addFeature(const std::string& name) { _registry.features.insert(name); }

    /// Makes the initial controller with its view tree of the given size, outlets set by name through
    /// key-value access, item actions bound to performAction. Nothing, with one log line that says where, if
    /// the resource is missing or malformed or names an unknown class; an unknown outlet is logged and
    /// skipped. Screens keep what they need to go on to others: the storyboard itself may go.
    std::shared_ptr<UIViewController> instantiateInitialViewController(CGSize size) const;

  private:
    std::shared_ptr<UIViewController> instantiate(const std::string& scene, CGSize size) const;
    std::shared_ptr<UIViewController> controllerOf(const StoryboardNode& root, const StoryboardNode& scene,
                                                   CGSize size) const;
    void laySegues(const StoryboardNode& root, const StoryboardNode& list,
                   UIViewController& controller) const;

    std::string _name;
    Registry _registry;
};
