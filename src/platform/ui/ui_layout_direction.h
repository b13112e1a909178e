// Which way the user's texts run, and with them rows and bars.
// The strings of a language say so themselves, under the key "layout direction": "rtl" or anything else.
#pragma once

#include "platform/foundation/geometry.h"

enum class UIUserInterfaceLayoutDirection { leftToRight, rightToLeft };

/// Of the language whose strings are shown, which need not be the user's first one.
UIUserInterfaceLayoutDirection userInterfaceLayoutDirection();

/// The rectangle as it lies within a width in that direction; places are given for left to right.
CGRect directed(CGRect rect, CGFloat width, UIUserInterfaceLayoutDirection direction);
