// Holds the capture of this run.
// The recorder and the compositor find it here.
#include "platform/host/screen_capture.h"

#include <utility>

namespace {

std::shared_ptr<ScreenCapture>& slot() {
    static std::shared_ptr<ScreenCapture> capture;
    return capture;
}

}  // namespace

std::shared_ptr<ScreenCapture> sharedScreenCapture() {
    return slot();
}

void setSharedScreenCapture(std::shared_ptr<ScreenCapture> capture) {
    slot() = std::move(capture);
}
