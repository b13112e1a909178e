// The one screen.
#include "platform/ui/ui_screen.h"

UIScreen& UIScreen::mainScreen() {
    static UIScreen screen;
    return screen;
}

void UIScreen::setSizeAndScale(CGSize points, double scale) {
    _size = points;
    _scale = scale;
}
