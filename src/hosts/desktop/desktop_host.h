// The desktop host: a window, its input and its frames, until the user closes it.
// A thin loop around the app's two calls, handle and frame.
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "platform/foundation/geometry.h"
#include "platform/host/host_event.h"
#include "platform/ui/ui_application.h"

struct DesktopOptions {
    CGSize size{1280, 720};       ///< points
    std::optional<double> scale;  ///< pixels per point; absent: the display's own
    bool fullscreen = false;
    /// By which desktops know whose window it is.
    std::string identifier = {};
    /// What arrives first, a link or a picture; nothing for neither.
    std::optional<HostEvent> opening = {};
    /// Where other processes hand over their links, and pictures as URLs of files; empty: nowhere.
    std::string linkFolder = {};
    bool verbose = false;  ///< events, and when the first frame was shown, go to the log
    /// When the process began, as its log counts.
    std::chrono::steady_clock::time_point begun = std::chrono::steady_clock::now();
};

enum class DesktopEnd {
    closed,     ///< the user ended it
    noDisplay,  ///< nothing was started
    failed,     ///< there is a display, but nothing can be drawn on it
};

struct DesktopResult {
    DesktopEnd end = DesktopEnd::closed;
    std::string why;  ///< for an end other than closed: one line
};

/// Runs the app in a window until it ends. The settings' store and the other shared services are in place.
DesktopResult runDesktop(const DesktopOptions& options,
                         const std::function<std::shared_ptr<UIApplicationDelegate>()>& makeDelegate);
