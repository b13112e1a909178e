// What the host asks of the page that it lives in.
// One function for each thing the page offers; the page itself knows nothing of views or frames.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/foundation/geometry.h"
#include "platform/host/share_destinations.h"

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

/// How often the user can go back within the app before the page is left.
void stepsBack(int count);

void setClipboardText(const std::string& text);
/// Whether the browser has a share sheet that takes files.
bool hasShareSheet();
/// way: "sheet", "copy", "download" or "mail". picture: a PNG file; empty for none. The page answers with
/// zentaroShared.
void share(int number, const std::string& way, const SharedContent& content, const NSData& picture);
/// A new tab. NO if the browser lets none be opened.
bool openURL(const std::string& url);
/// Language tags, best first, a line each.
std::string languages();
/// Asks a server; the page answers with zentaroFetched. timeout: seconds. largest: bytes.
void fetchDocument(int number, const std::string& url, double timeout, std::size_t largest);
/// Of the answer of that number, while it is being told; fills all of `room`.
void fetchedBytes(int number, std::span<char> room);
void setFullscreen(bool fullscreen);
bool isFullscreen();
/// The screen neither dims nor locks while awake.
void keepAwake(bool awake);

/// Name of the page's server, with its port where it has one of its own: "zentaro.example", "localhost:8080".
std::string host();

/// Of the picture file that is being opened; as PictureFileBytes.
std::size_t pictureBytes(uint64_t offset, std::span<uint8_t> room);

/// Whether the browser can film the canvas.
bool canRecord();
/// Answers why not; empty for success.
std::string startRecording();
/// zentaroRecordingEnded follows.
bool stopRecording();
/// The last film, in the browser's player; zentaroPreviewFinished follows.
void showPreview();
void hidePreview();

/// A line in the browser's console.
void log(std::string_view line);

}  // namespace WebPage
