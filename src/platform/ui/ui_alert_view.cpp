// An alert controller with this view's buttons.
// The screen above all others is the last one presented.
#include "platform/ui/ui_alert_view.h"

#include <utility>

#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_alert_controller.h"
#include "platform/ui/ui_application.h"

int64_t UIAlertView::addButtonWithTitle(std::string title) {
    _buttons.push_back(std::move(title));
    return numberOfButtons() - 1;
}

void UIAlertView::show() {
    const UIApplication* application = UIApplication::sharedApplication();
    const auto screen = application ? application->topViewController() : nullptr;
    if (!screen) {
        NSLog("UIAlertView: there is no screen to show it over");
        return;
    }
    const auto alert = std::make_shared<UIAlertController>(_title, _message);
    for (int64_t index = 0; index < numberOfButtons(); ++index) {
        const auto style =
            index == _cancelButtonIndex ? UIAlertActionStyle::cancel : UIAlertActionStyle::plain;
        alert->addAction({_buttons[static_cast<std::size_t>(index)], style,
                          [dismissed = _dismissed, index] { dismissed(index); }});
    }
    _alert = alert;
    screen->presentViewController(alert, true);
}

bool UIAlertView::isVisible() const {
    const auto alert = _alert.lock();
    return alert && alert->isVisible();
}
