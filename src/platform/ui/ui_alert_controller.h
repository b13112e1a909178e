// A question over whatever is on the screen: a title, a message and buttons, of which the user picks one.
// Nothing but a button, or the escape key in the place of the one that cancels, takes it away.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_view_controller.h"

/// The platform's "default" is `plain` here: that word is the language's own.
enum class UIAlertActionStyle : int64_t { plain = 0, cancel = 1, destructive = 2 };

struct UIAlertAction {
    std::string title;
    UIAlertActionStyle style = UIAlertActionStyle::plain;
    /// Called once the alert is on its way out; may be empty.
    std::function<void()> handler;
};

class AlertBoxView;

class UIAlertController : public UIViewController {
  public:
    UIAlertController(std::string title, std::string message);

    /// Before it is presented. Actions are shown in the order of adding.
    void addAction(UIAlertAction action) { _actions.push_back(std::move(action)); }
    const std::vector<UIAlertAction>& actions() const { return _actions; }
    /// From its presentation until it is taken away, with an answer or without.
    bool isVisible() const { return presentingViewController() != nullptr; }
    const std::string& title() const { return _title; }
    const std::string& message() const { return _message; }

    void loadView() override;
    bool keyPressed(const HostKeyPress& press) override;

  private:
    void choose(std::size_t index);

    std::string _title;
    std::string _message;
    std::vector<UIAlertAction> _actions;
    std::shared_ptr<AlertBoxView> _box;
    bool _isAnswered = false;
};
