// The app's screens as storyboards: the classes that these name, and what their texts and rows need to know.
// The framework knows none of them.
#pragma once

#include "platform/ui/ui_storyboard.h"

/// hasStore: whether the app is in a store, so that rows that lead there make sense.
UIStoryboard makeMainStoryboard(bool hasStore);
