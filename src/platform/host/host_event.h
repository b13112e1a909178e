// Host contract: everything that happens to the app from outside, as small typed values.
// A host turns native input into these and hands them to UIApplication::handle.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <variant>

#include "platform/foundation/geometry.h"
#include "platform/graphics/picture_texts.h"

/// Seconds on the host's monotonic clock; the same clock as UIApplication::frame's.
using HostTime = double;

enum class UITouchPhase { began, moved, ended, cancelled };

constexpr bool isLift(UITouchPhase phase) {
    return phase == UITouchPhase::ended || phase == UITouchPhase::cancelled;
}

struct HostTouch {
    UITouchPhase phase = UITouchPhase::began;
    /// One finger, pen or the mouse from its landing to its lift; ids may be used again afterwards.
    int64_t id = 0;
    CGPoint location;  ///< points from the window's top left
    HostTime time = 0;
};

enum class HostKey {
    character,
    escape,
    returnKey,
    space,
    home,
    left,
    right,
    up,
    down,
    f1,
    f11,
    tab,
    backspace,
    pageUp,
    pageDown,
    end,
    back  ///< of phones, browsers and some keyboards: to the screen before this one
};

struct HostKeyPress {
    HostKey key = HostKey::character;
    /// For HostKey::character: the UTF-8 text that the press types ("?", "c"), in lower case for letters.
    std::string text;
    bool repeated = false;
    bool control = false;
    HostTime time = 0;
};

struct HostWheel {
    CGPoint location;
    double steps = 0;  ///< notches, away from the user positive; parts of them from fine wheels and trackpads
    HostTime time = 0;
};

/// A step of a pinch on a trackpad, which has no places on the screen.
struct HostMagnify {
    CGPoint location;   ///< of the pointer
    double factor = 1;  ///< above 1 as the fingers spread
    HostTime time = 0;
};

struct HostResize {
    CGSize size;       ///< points
    double scale = 1;  ///< pixels per point
};

/// Hidden or minimised windows draw nothing and stop the clock.
struct HostVisibility {
    bool visible = true;
};

/// What notches, rounded corners and system bars cover, from each edge of the window in points.
struct HostSafeArea {
    UIEdgeInsets insets;
};

/// The user asks for things on the screen to move less, or no longer does.
struct HostReduceMotion {
    bool reduced = false;
};

/// How the device is held: landscapeLeft has the upper edge of a device held upright on the left.
enum class UIDeviceOrientation { unknown, portrait, portraitUpsideDown, landscapeLeft, landscapeRight };

struct HostOrientation {
    UIDeviceOrientation orientation = UIDeviceOrientation::unknown;
};

/// A link that somebody handed to the app: at its start, from another program, dropped or pasted. Any text.
struct HostOpenLink {
    std::string text;
};

/// A file that somebody handed to the app as a picture: at its start, from another program or dropped.
struct HostOpenPicture {
    std::string name;                   ///< as its giver knows it
    std::optional<PictureTexts> texts;  ///< nothing for a file that is no picture
};

enum class HostLifecycle { didBecomeActive, willResignActive, memoryWarning, willTerminate };

/// The GL context died with all its objects; the surface can make a new one.
struct HostContextLost {};

struct HostClose {};

using HostEvent = std::variant<HostTouch, HostKeyPress, HostWheel, HostMagnify, HostResize, HostSafeArea,
                               HostVisibility, HostReduceMotion, HostOrientation, HostOpenLink,
                               HostOpenPicture, HostLifecycle, HostContextLost, HostClose>;

/// One line for logs and failing tests: "touch began 3 {12, 40} 0.25".
std::string describe(const HostEvent& event);
