// What the host asks of the page that it lives in.
// One function for each thing the page offers; the page itself knows nothing of views or frames.
#pragma once

#include <string>
#include <string_view>

#include "platform/foundation/geometry.h"

namespace WebPage {

/// The screen as it is now.
CGSize size();   ///< points
double scale();  ///< pixels per point

/// The first frame is on the screen.
void started();
/// Nothing more will be drawn; one line says why.
void failed(std::string_view reason);
/// From now on a crash of the program is told to the page like any other failure.
void reportCrashes();

/// The place in the plane that is looked at, as a path of the address ("/mandelbrot/-2/-1.5/1/1.5").
void viewSettled(const std::string& path);
/// What is on the screen for who cannot see it, as the text of a JSON list.
void mirror(const std::string& json);

void setClipboardText(const std::string& text);
void setFullscreen(bool fullscreen);
bool isFullscreen();
/// The screen neither dims nor locks while awake.
void keepAwake(bool awake);

/// Name of the page's server, with its port where it has one of its own: "zentaro.example", "localhost:8080".
std::string host();

/// A line in the browser's console.
void log(std::string_view line);

}  // namespace WebPage
