// Steps of magnification.
// Fingers that hold the view meanwhile keep it from none of them.
#include "platform/ui/ui_magnification_gesture_recognizer.h"

UIMagnificationGestureRecognizer::UIMagnificationGestureRecognizer(
    std::function<void(UIMagnificationGestureRecognizer&)> action)
    : UIGestureRecognizer([action = std::move(action)](UIGestureRecognizer& step) {
          action(static_cast<UIMagnificationGestureRecognizer&>(step));
      }) {}

void UIMagnificationGestureRecognizer::takeMagnification(const UIMagnification& step) {
    _step = step;
    setState(UIGestureRecognizerState::ended);
    setState(UIGestureRecognizerState::possible);
    takeRecognition();
}
