// Translation by kind of event; what no kind takes means nothing to the app.
// The window's own hints keep SDL from making mice of fingers and fingers of mice; what slips through is
// dropped here.
#include "hosts/desktop/sdl_event_translator.h"

#include <SDL_keyboard.h>
#include <SDL_keycode.h>
#include <SDL_mouse.h>
#include <SDL_touch.h>
#include <array>
#include <cmath>
#include <optional>
#include <string_view>
#include <utility>

#include "platform/foundation/ascii_text.h"

namespace {

CGPoint pointAt(double x, double y, const WindowGeometry& geometry) {
    return {x * geometry.pointsPerUnit, y * geometry.pointsPerUnit};
}

std::optional<HostEvent> translateMouseButton(const SDL_MouseButtonEvent& button,
                                              const WindowGeometry& geometry, HostTime time) {
    if (button.which == SDL_TOUCH_MOUSEID || button.button != SDL_BUTTON_LEFT) return std::nullopt;
    const auto phase = button.type == SDL_MOUSEBUTTONDOWN ? UITouchPhase::began : UITouchPhase::ended;
    return HostTouch{phase, SdlEventTranslator::kMouseTouch, pointAt(button.x, button.y, geometry), time};
}

std::optional<HostEvent> translateMouseMotion(const SDL_MouseMotionEvent& motion,
                                              const WindowGeometry& geometry, HostTime time) {
    if (motion.which == SDL_TOUCH_MOUSEID || (motion.state & SDL_BUTTON_LMASK) == 0) return std::nullopt;
    return HostTouch{UITouchPhase::moved, SdlEventTranslator::kMouseTouch,
                     pointAt(motion.x, motion.y, geometry), time};
}

std::optional<HostEvent> translateWheel(const SDL_MouseWheelEvent& wheel, const WindowGeometry& geometry,
                                        HostTime time) {
    if (wheel.which == SDL_TOUCH_MOUSEID) return std::nullopt;
    const double away = static_cast<double>(wheel.preciseY);
    const double steps = wheel.direction == SDL_MOUSEWHEEL_FLIPPED ? -away : away;
    if (steps == 0) return std::nullopt;
    return HostWheel{pointAt(wheel.mouseX, wheel.mouseY, geometry), steps, time};
}

std::optional<HostEvent> translateMouse(const SDL_Event& event, const WindowGeometry& geometry,
                                        HostTime time) {
    switch (event.type) {
        case SDL_MOUSEBUTTONDOWN:
        case SDL_MOUSEBUTTONUP:
            return translateMouseButton(event.button, geometry, time);
        case SDL_MOUSEMOTION:
            return translateMouseMotion(event.motion, geometry, time);
        case SDL_MOUSEWHEEL:
            return translateWheel(event.wheel, geometry, time);
        default:
            return std::nullopt;
    }
}

std::optional<UITouchPhase> fingerPhase(uint32_t type) {
    switch (type) {
        case SDL_FINGERDOWN:
            return UITouchPhase::began;
        case SDL_FINGERMOTION:
            return UITouchPhase::moved;
        case SDL_FINGERUP:
            return UITouchPhase::ended;
        default:
            return std::nullopt;
    }
}

/// SDL must not be asked for the type of a device that it does not know: it looks for new ones then, in a
/// window system that may not be there.
bool isKnown(SDL_TouchID device) {
    for (int i = 0; i < SDL_GetNumTouchDevices(); ++i) {
        if (SDL_GetTouchDevice(i) == device) return true;
    }
    return false;
}

/// Fingers on a trackpad are nowhere on the screen. Unknown devices count as screens.
bool isTrackpad(SDL_TouchID device) {
    if (!isKnown(device)) return false;
    const SDL_TouchDeviceType type = SDL_GetTouchDeviceType(device);
    return type == SDL_TOUCH_DEVICE_INDIRECT_ABSOLUTE || type == SDL_TOUCH_DEVICE_INDIRECT_RELATIVE;
}

/// SDL measures in lengths of the trackpad how much farther each finger is from their middle.
constexpr double kMagnificationOfATrackpad = 4;

/// Fingers on a screen speak for themselves.
std::optional<HostEvent> translateGesture(const SDL_MultiGestureEvent& gesture,
                                          const WindowGeometry& geometry, HostTime time) {
    if (!isTrackpad(gesture.touchId) || gesture.dDist == 0) return std::nullopt;
    int x = 0;
    int y = 0;
    SDL_GetMouseState(&x, &y);
    const double factor = std::exp(kMagnificationOfATrackpad * static_cast<double>(gesture.dDist));
    return HostMagnify{pointAt(x, y, geometry), factor, time};
}

std::optional<HostEvent> translateFinger(const SDL_Event& event, const WindowGeometry& geometry,
                                         HostTime time) {
    const auto phase = fingerPhase(event.type);
    const SDL_TouchID device = event.tfinger.touchId;
    if (!phase || device == SDL_MOUSE_TOUCHID || isTrackpad(device)) return std::nullopt;
    // One up keeps clear of the mouse; unsigned, so that the largest id wraps instead of overflowing.
    const auto id = static_cast<int64_t>(static_cast<uint64_t>(event.tfinger.fingerId) + 1);
    const CGPoint location{static_cast<double>(event.tfinger.x) * geometry.size.width,
                           static_cast<double>(event.tfinger.y) * geometry.size.height};
    return HostTouch{*phase, id, location, time};
}

std::optional<HostKey> namedKey(SDL_Keycode code) {
    static constexpr std::array<std::pair<SDL_Keycode, HostKey>, 17> keys{{
        {SDLK_ESCAPE, HostKey::escape},
        {SDLK_RETURN, HostKey::returnKey},
        {SDLK_KP_ENTER, HostKey::returnKey},
        {SDLK_SPACE, HostKey::space},
        {SDLK_HOME, HostKey::home},
        {SDLK_LEFT, HostKey::left},
        {SDLK_RIGHT, HostKey::right},
        {SDLK_UP, HostKey::up},
        {SDLK_DOWN, HostKey::down},
        {SDLK_F1, HostKey::f1},
        {SDLK_F11, HostKey::f11},
        {SDLK_TAB, HostKey::tab},
        {SDLK_BACKSPACE, HostKey::backspace},
        {SDLK_PAGEUP, HostKey::pageUp},
        {SDLK_PAGEDOWN, HostKey::pageDown},
        {SDLK_END, HostKey::end},
        {SDLK_AC_BACK, HostKey::back},
    }};
    for (const auto& [name, key] : keys) {
        if (name == code) return key;
    }
    return std::nullopt;
}

/// Keys without text, and those typed with control, which type none; the others follow as text.
std::optional<HostEvent> translateKeyDown(const SDL_KeyboardEvent& press, HostTime time) {
    const SDL_Keycode code = press.keysym.sym;
    const bool repeated = press.repeat != 0;
    const bool control = (press.keysym.mod & KMOD_CTRL) != 0;
    if (const auto key = namedKey(code)) return HostKeyPress{*key, "", repeated, control, time};
    // AltGr is control and alt on some systems, and types text.
    const bool typesNothing = control && (press.keysym.mod & (KMOD_ALT | KMOD_MODE)) == 0;
    if (!typesNothing || code <= ' ' || code > '~') return std::nullopt;
    const std::string text(1, static_cast<char>(code));
    return HostKeyPress{HostKey::character, asciiLowercase(text), repeated, true, time};
}

/// An input method may type several characters at once: each is a press.
void translateText(std::string_view text, bool repeated, HostTime time, std::vector<HostEvent>& out) {
    while (!text.empty()) {
        const auto character = text.substr(0, utf8CharacterLength(text.front()));
        text.remove_prefix(character.size());
        // Space came as a key already.
        if (character == " ") continue;
        out.emplace_back(HostKeyPress{HostKey::character, asciiLowercase(character), repeated, false, time});
    }
}

std::optional<HostEvent> translateWindow(const SDL_WindowEvent& window, const WindowGeometry& geometry) {
    switch (window.event) {
        case SDL_WINDOWEVENT_SIZE_CHANGED:
        case SDL_WINDOWEVENT_DISPLAY_CHANGED:
            return HostResize{geometry.size, geometry.scale};
        case SDL_WINDOWEVENT_HIDDEN:
        case SDL_WINDOWEVENT_MINIMIZED:
            return HostVisibility{false};
        case SDL_WINDOWEVENT_SHOWN:
        case SDL_WINDOWEVENT_EXPOSED:
        case SDL_WINDOWEVENT_RESTORED:
        case SDL_WINDOWEVENT_MAXIMIZED:
            return HostVisibility{true};
        case SDL_WINDOWEVENT_FOCUS_GAINED:
            return HostLifecycle::didBecomeActive;
        case SDL_WINDOWEVENT_FOCUS_LOST:
            return HostLifecycle::willResignActive;
        default:
            return std::nullopt;
    }
}

std::optional<HostEvent> translateLife(uint32_t type) {
    switch (type) {
        // Closing the last window, and the signals to end, arrive as this one.
        case SDL_QUIT:
            return HostClose{};
        case SDL_APP_TERMINATING:
            return HostLifecycle::willTerminate;
        case SDL_APP_LOWMEMORY:
            return HostLifecycle::memoryWarning;
        case SDL_APP_DIDENTERBACKGROUND:
            return HostVisibility{false};
        case SDL_APP_DIDENTERFOREGROUND:
            return HostVisibility{true};
        default:
            return std::nullopt;
    }
}

}  // namespace

void SdlEventTranslator::translate(const SDL_Event& event, const WindowGeometry& geometry, HostTime time,
                                   std::vector<HostEvent>& out) {
    if (event.type == SDL_TEXTINPUT) {
        translateText(event.text.text, _repeated, time, out);
        return;
    }
    std::optional<HostEvent> meaning;
    if (event.type == SDL_KEYDOWN) {
        _repeated = event.key.repeat != 0;
        meaning = translateKeyDown(event.key, time);
    } else if (event.type == SDL_WINDOWEVENT) {
        meaning = translateWindow(event.window, geometry);
    } else if (event.type >= SDL_MOUSEMOTION && event.type <= SDL_MOUSEWHEEL) {
        meaning = translateMouse(event, geometry, time);
    } else if (event.type >= SDL_FINGERDOWN && event.type <= SDL_FINGERMOTION) {
        meaning = translateFinger(event, geometry, time);
    } else if (event.type == SDL_MULTIGESTURE) {
        meaning = translateGesture(event.mgesture, geometry, time);
    } else if (event.type == SDL_DROPTEXT) {
        if (event.drop.file != nullptr) meaning = HostOpenLink{event.drop.file};
    } else {
        meaning = translateLife(event.type);
    }
    if (meaning) out.push_back(*std::move(meaning));
}
