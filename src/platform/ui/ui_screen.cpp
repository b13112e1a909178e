// The one screen.
// The application object sets it when the host's window changes.
#include "platform/ui/ui_screen.h"

UIScreen& UIScreen::mainScreen() {
    static UIScreen screen;
    return screen;
}

void UIScreen::setSizeAndScale(CGSize points, double scale) {
    _size = points;
    _scale = scale;
}
