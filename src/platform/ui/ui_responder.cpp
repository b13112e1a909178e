// The chain of responders: what one does not want, the next one gets.
// Views override only what they want; the rest finds its way up to the controller.
#include "platform/ui/ui_responder.h"

#include "platform/ui/ui_view.h"

CGPoint UITouch::locationInView(const UIView& of) const {
    return of.convertPointFromWindow(location);
}

void UIResponder::touchesBegan(const UITouches& touches, const UIEvent& event) {
    if (UIResponder* next = nextResponder()) next->touchesBegan(touches, event);
}

void UIResponder::touchesMoved(const UITouches& touches, const UIEvent& event) {
    if (UIResponder* next = nextResponder()) next->touchesMoved(touches, event);
}

void UIResponder::touchesEnded(const UITouches& touches, const UIEvent& event) {
    if (UIResponder* next = nextResponder()) next->touchesEnded(touches, event);
}

void UIResponder::touchesCancelled(const UITouches& touches, const UIEvent& event) {
    if (UIResponder* next = nextResponder()) next->touchesCancelled(touches, event);
}
