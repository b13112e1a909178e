// What the app hears of SDL's events, from events made by hand.
// No window is needed for them.
#include "hosts/desktop/sdl_event_translator.h"

#include <SDL_keycode.h>
#include <SDL_touch.h>
#include <cstring>
#include <gtest/gtest.h>

#include "hosts/desktop/frame_pacer.h"

namespace {

/// A window of 600 x 300 points with 2 pixels a point, whose SDL coordinates are pixels.
const WindowGeometry kGeometry{{600, 300}, 2, 0.5};

class SdlEvents : public testing::Test {
  protected:
    /// The events as the log shows them, joined by "; ".
    std::string heard(const SDL_Event& event) {
        std::vector<HostEvent> events;
        _translator.translate(event, kGeometry, 1.5, events);
        std::string text;
        for (const auto& one : events)
            text += (text.empty() ? "" : "; ") + describe(one);
        return text;
    }
    static std::string described(const HostEvent& event) { return describe(event); }

    SdlEventTranslator _translator;
};

SDL_Event ofType(uint32_t type) {
    SDL_Event event;
    std::memset(&event, 0, sizeof event);
    event.type = type;
    return event;
}

SDL_Event button(uint32_t type, uint8_t which, int x, int y) {
    SDL_Event event = ofType(type);
    event.button.button = which;
    event.button.x = x;
    event.button.y = y;
    return event;
}

SDL_Event key(SDL_Keycode code, uint16_t modifiers = KMOD_NONE, bool repeated = false) {
    SDL_Event event = ofType(SDL_KEYDOWN);
    event.key.keysym.sym = code;
    event.key.keysym.mod = modifiers;
    event.key.repeat = repeated ? 1 : 0;
    return event;
}

SDL_Event text(const char* typed) {
    SDL_Event event = ofType(SDL_TEXTINPUT);
    std::strncpy(event.text.text, typed, sizeof event.text.text - 1);
    return event;
}

SDL_Event finger(uint32_t type, SDL_FingerID id, float x, float y) {
    SDL_Event event = ofType(type);
    event.tfinger.touchId = 7;
    event.tfinger.fingerId = id;
    event.tfinger.x = x;
    event.tfinger.y = y;
    return event;
}

SDL_Event windowEvent(uint8_t what) {
    SDL_Event event = ofType(SDL_WINDOWEVENT);
    event.window.event = what;
    return event;
}

TEST_F(SdlEvents, TheLeftMouseButtonIsOneTouchInPointsAndFingersHaveOtherIds) {
    SDL_Event motion = ofType(SDL_MOUSEMOTION);
    motion.motion.x = 102;
    motion.motion.y = 44;
    motion.motion.state = SDL_BUTTON_LMASK;
    const std::pair<SDL_Event, HostTouch> rows[] = {
        {button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 100, 40), {UITouchPhase::began, 0, {50, 20}, 1.5}},
        {motion, {UITouchPhase::moved, 0, {51, 22}, 1.5}},
        {button(SDL_MOUSEBUTTONUP, SDL_BUTTON_LEFT, 102, 44), {UITouchPhase::ended, 0, {51, 22}, 1.5}},
        {finger(SDL_FINGERDOWN, 0, 0.5F, 0.25F), {UITouchPhase::began, 1, {300, 75}, 1.5}},
        {finger(SDL_FINGERMOTION, 41, 1, 1), {UITouchPhase::moved, 42, {600, 300}, 1.5}},
        {finger(SDL_FINGERUP, 41, 0, 0), {UITouchPhase::ended, 42, {0, 0}, 1.5}},
    };
    for (const auto& [event, touch] : rows)
        EXPECT_EQ(heard(event), described(touch));
}

TEST_F(SdlEvents, OtherButtonsHoveringAndMiceMadeOfFingersAreNotHeard) {
    EXPECT_EQ(heard(button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_RIGHT, 1, 1)), "");
    SDL_Event hover = ofType(SDL_MOUSEMOTION);
    hover.motion.state = SDL_BUTTON_RMASK;
    EXPECT_EQ(heard(hover), "");
    SDL_Event synthetic = button(SDL_MOUSEBUTTONDOWN, SDL_BUTTON_LEFT, 1, 1);
    synthetic.button.which = SDL_TOUCH_MOUSEID;
    EXPECT_EQ(heard(synthetic), "");
    SDL_Event fromMouse = finger(SDL_FINGERDOWN, 1, 0.5F, 0.5F);
    fromMouse.tfinger.touchId = SDL_MOUSE_TOUCHID;
    EXPECT_EQ(heard(fromMouse), "");
}

TEST_F(SdlEvents, WheelStepsPointAwayFromTheUserWhateverTheSystemsTaste) {
    SDL_Event wheel = ofType(SDL_MOUSEWHEEL);
    wheel.wheel.preciseY = 1.5F;
    wheel.wheel.mouseX = 20;
    wheel.wheel.mouseY = 60;
    EXPECT_EQ(heard(wheel), described(HostWheel{{10, 30}, 1.5, 1.5}));
    wheel.wheel.direction = SDL_MOUSEWHEEL_FLIPPED;
    EXPECT_EQ(heard(wheel), described(HostWheel{{10, 30}, -1.5, 1.5}));
    wheel.wheel.preciseY = 0;
    EXPECT_EQ(heard(wheel), "") << "sideways";
}

TEST_F(SdlEvents, KeysAreHeardOnceAndWithTheirTextInLowerCase) {
    const auto press = [](HostKey which, const std::string& typed, bool repeated, bool control) {
        return described(HostKeyPress{which, typed, repeated, control, 1.5});
    };
    ASSERT_EQ(press(HostKey::backspace, "", true, true), "key control+backspace repeated 1.5");
    const auto typed = [&](const char* character) {
        return press(HostKey::character, character, false, false);
    };
    const std::pair<SDL_Event, std::string> rows[] = {
        {key(SDLK_c), ""},  // its text follows
        {text("C"), typed("c")},
        {key(SDLK_SLASH, KMOD_LSHIFT), ""},
        {text("?"), typed("?")},
        {key(SDLK_SPACE), press(HostKey::space, "", false, false)},
        {text(" "), ""},
        {text("a\xC3\xA9\xE2\x82\xAC"), typed("a") + "; " + typed("\xC3\xA9") + "; " + typed("\xE2\x82\xAC")},
        {text("\xE2"), typed("\xE2")},  // cut off text is not read beyond its end
        {key(SDLK_c, KMOD_NONE, true), ""},
        {text("c"), press(HostKey::character, "c", true, false)},  // held
        {key(SDLK_F11, KMOD_NONE, true), press(HostKey::f11, "", true, false)},
        {key(SDLK_c), ""},
        {text("c"), typed("c")},
        {key(SDLK_q, KMOD_LCTRL), press(HostKey::character, "q", false, true)},  // no text follows
        {key(SDLK_q, KMOD_LCTRL | KMOD_RALT), ""},                               // AltGr: its text does
        {key(SDLK_LCTRL, KMOD_LCTRL), ""},
    };
    for (std::size_t i = 0; i < std::size(rows); ++i)
        EXPECT_EQ(heard(rows[i].first), rows[i].second) << "row " << i;
}

TEST_F(SdlEvents, DroppedTextIsALinkAndDroppedFilesAreNone) {
    SDL_Event drop = ofType(SDL_DROPTEXT);
    std::string text = "zentaro://julia/0/0/1/1";
    drop.drop.file = text.data();
    EXPECT_EQ(heard(drop), "link zentaro://julia/0/0/1/1");
    drop.type = SDL_DROPFILE;
    EXPECT_EQ(heard(drop), "");
    drop = ofType(SDL_DROPTEXT);
    EXPECT_EQ(heard(drop), "");
}

TEST_F(SdlEvents, TheWindowsLife) {
    const struct {
        SDL_Event event;
        std::string means;
    } rows[] = {
        {windowEvent(SDL_WINDOWEVENT_SIZE_CHANGED), described(HostResize{{600, 300}, 2})},
        {windowEvent(SDL_WINDOWEVENT_RESIZED), ""},  // it accompanies SIZE_CHANGED
        {windowEvent(SDL_WINDOWEVENT_MINIMIZED), described(HostVisibility{false})},
        {windowEvent(SDL_WINDOWEVENT_HIDDEN), described(HostVisibility{false})},
        {windowEvent(SDL_WINDOWEVENT_EXPOSED), described(HostVisibility{true})},
        {windowEvent(SDL_WINDOWEVENT_RESTORED), described(HostVisibility{true})},
        {windowEvent(SDL_WINDOWEVENT_FOCUS_LOST), described(HostLifecycle::willResignActive)},
        {windowEvent(SDL_WINDOWEVENT_FOCUS_GAINED), described(HostLifecycle::didBecomeActive)},
        {windowEvent(SDL_WINDOWEVENT_CLOSE), ""},  // SDL_QUIT follows, as it does a signal
        {ofType(SDL_QUIT), described(HostClose{})},
        {ofType(SDL_APP_LOWMEMORY), described(HostLifecycle::memoryWarning)},
        {ofType(SDL_APP_TERMINATING), described(HostLifecycle::willTerminate)},
        {ofType(SDL_CLIPBOARDUPDATE), ""},
        {ofType(SDL_KEYUP), ""},
        {ofType(SDL_MULTIGESTURE), ""},  // of fingers that are heard one by one
    };
    for (const auto& [event, means] : rows) {
        EXPECT_EQ(heard(event), means) << "type " << event.type << " window " << int{event.window.event};
    }
}

TEST(FramePacer, LeavesSynchronisedAndSlowFramesAlone) {
    FramePacer pacer(0.016);
    for (int i = 0; i < 100; ++i) {
        const double begun = i * 0.016;
        EXPECT_EQ(pacer.pauseAfter(begun, begun + 0.0155), 0) << i;
    }
}

TEST(FramePacer, BringsHurriedFramesToTheDisplaysPace) {
    FramePacer pacer(0.016);
    double now = 0;
    int frames = 0;
    for (; now < 10; ++frames) {
        const double begun = now;
        now += 0.003;
        now += pacer.pauseAfter(begun, now);
    }
    EXPECT_NEAR(frames, 10 / 0.016, 10);
}

TEST(FramePacer, ALateFrameIsNotMadeUpForByHurryingAfterwards) {
    FramePacer pacer(0.010);
    double now = 0;
    for (int i = 0; i < 20; ++i) {
        const double begun = now;
        now += 0.001;
        now += pacer.pauseAfter(begun, now);
    }
    now += 1;  // one frame took a second
    EXPECT_EQ(pacer.pauseAfter(now - 1, now), 0);
    EXPECT_NEAR(pacer.pauseAfter(now, now + 0.001), 0.009, 0.001);
}

}  // namespace
