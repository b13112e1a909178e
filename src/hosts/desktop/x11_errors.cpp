// Xlib is reached through the loader, so that the desktop host needs neither its headers nor its presence.
// The handler may make no X requests; logging makes none.
#include "hosts/desktop/x11_errors.h"

#include <SDL_loadso.h>
#include <SDL_video.h>
#include <string_view>

#include "platform/foundation/ns_log.h"

namespace {

using ErrorHandler = int (*)(void* display, void* event);

int logError(void*, void*) {
    NSLog("The display refused a request; going on without");
    return 0;
}

}  // namespace

void surviveX11Errors() {
    const char* driver = SDL_GetCurrentVideoDriver();
    if (driver == nullptr || std::string_view(driver) != "x11") return;
    void* library = SDL_LoadObject("libX11.so.6");
    if (library == nullptr) return;
    const auto setErrorHandler =
        reinterpret_cast<ErrorHandler (*)(ErrorHandler)>(SDL_LoadFunction(library, "XSetErrorHandler"));
    if (setErrorHandler != nullptr) setErrorHandler(logError);
}
