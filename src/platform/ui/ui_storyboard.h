// A screen's layout as data: "NAME.storyboard.json" among the resources says which views a controller has,
// where, with which outlets and actions. Classes are found by the names under which the app registered them.
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

    explicit UIStoryboard(std::string name) : _name(std::move(name)) {}
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
