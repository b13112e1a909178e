// Holds the one recorder of the app.
// Availability is the host's word.
#include "platform/media/rp_screen_recorder.h"

RPScreenRecorder& RPScreenRecorder::sharedRecorder() {
    static RPScreenRecorder recorder;
    return recorder;
}
