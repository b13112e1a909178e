// Ways between screens, by name.
// What a way does is the storyboard's; here it is found and gone.
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_view_controller.h"

void UIViewController::performSegueWithIdentifier(const std::string& identifier, const Sender& sender) {
    const auto found = _segues.find(identifier);
    if (found == _segues.end()) {
        NSLog("UIViewController: there is no segue \"%s\" from here", identifier.c_str());
        return;
    }
    const Segue segue = found->second;
    segue(*this, sender);
}

void UIViewController::unwind(const std::string& action, const UIStoryboardSegue& segue) {
    std::shared_ptr<UIViewController> target = presentingViewController();
    while (target && !target->canPerformUnwindAction(action))
        target = target->presentingViewController();
    if (!target) {
        NSLog("UIViewController: no screen below has the action \"%s\"", action.c_str());
        return;
    }
    target->dismissViewControllerAnimated(
        true, [target, action, segue] { target->performUnwindAction(action, segue); });
}
