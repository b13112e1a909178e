// The older way to ask: buttons are known by their indices, and it finds the screen to stand over by itself.
// Shown as an alert controller is.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "platform/ui/ui_responder.h"

class UIAlertController;

class UIAlertView : public UIResponder {
  public:
    using Dismissed = std::function<void(int64_t buttonIndex)>;

    /// dismissed: called with the button that the user picked.
    UIAlertView(std::string title, std::string message, Dismissed dismissed)
        : _title(std::move(title)), _message(std::move(message)), _dismissed(std::move(dismissed)) {}

    /// Answers its index.
    int64_t addButtonWithTitle(std::string title);
    /// -1 for none.
    void setCancelButtonIndex(int64_t index) { _cancelButtonIndex = index; }
    int64_t numberOfButtons() const { return static_cast<int64_t>(_buttons.size()); }
    /// Over the screen that lies above all others. Nothing, with a log line, before there is one.
    void show();
    bool isVisible() const;

  private:
    std::string _title;
    std::string _message;
    Dismissed _dismissed;
    std::vector<std::string> _buttons;
    int64_t _cancelButtonIndex = -1;
    std::weak_ptr<UIAlertController> _alert;
};
