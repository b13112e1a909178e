// Storyboards: the app's own one, and everything that can be wrong in one.
// Damaged layouts are told in one line and start nothing.
#include "platform/ui/ui_storyboard.h"

#include <gmock/gmock.h>

#include "platform/foundation/ns_bundle.h"
#include "platform/ui/ui_toolbar.h"
#include "tests/support/headless_screen.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

class UIStoryboardTest : public testing::Test {
  protected:
    ~UIStoryboardTest() override { NSBundle::mainBundle().setReader({}); }

    static std::shared_ptr<UIViewController> load(const std::string& text) {
        NSBundle::mainBundle().setReader([text](const std::string& file) -> std::optional<std::string> {
            if (file != "Test.storyboard.json") return std::nullopt;
            return text;
        });
        UIStoryboard storyboard("Test");
        storyboard.registerController("Screen", [] { return std::make_shared<UIViewController>(); });
        storyboard.registerView("Broken", [] { return nullptr; });
        return storyboard.instantiateInitialViewController(CGSizeMake(200, 100));
    }
    static std::string scene(const std::string& view) {
        return R"({"initialController": {"class": "Screen", "view": )" + view + "}}";
    }
    static std::string rootWith(const std::string& more) {
        return scene(R"({"class": "UIView", "frame": [0, 0, 100, 50], )" + more + "}");
    }
    static std::string item(const std::string& text) {
        return scene(R"({"class": "UIToolbar", "frame": [0, 0, 100, 50], "items": [)" + text + "]}");
    }

    LogCapture log;
};

using AppsOwnStoryboard = HeadlessScreenTest;

TEST_F(AppsOwnStoryboard, HasALabelAPictureAndAnActionForEveryButton) {
    launch({{844, 390}, 1});
    EXPECT_THAT(log.lines, testing::IsEmpty());
    for (const auto& each : UIToolbar::Items(screen->menuView->items())) {
        if (each->isFlexibleSpace()) continue;
        EXPECT_FALSE(each->accessibilityLabel().empty());
        EXPECT_EQ(each->view()->accessibilityLabel(), each->accessibilityLabel());
        EXPECT_TRUE(each->image() || !each->title().empty());
        each->sendAction();
    }
    EXPECT_THAT(log.lines, testing::Not(testing::Contains(HasSubstr("no action"))));
}

TEST_F(UIStoryboardTest, EveryFaultIsOneLineThatSaysWhere) {
    std::string nested = R"({"class": "UIView", "frame": [0, 0, 1, 1]})";
    for (int i = 0; i < 40; ++i) {
        nested.insert(0, R"({"class": "UIView", "frame": [0, 0, 1, 1], "subviews": [)").append("]}");
    }
    const std::pair<std::string, const char*> faults[] = {
        {"", "parse error"},
        {"[]", "/: not an object"},
        {"{}", "/: \"initialController\" is missing"},
        {scene(R"({"class": "Nobody", "frame": [0, 0, 1, 1]})"), "/view/class: unknown class \"Nobody\""},
        {scene(R"({"class": "Broken", "frame": [0, 0, 1, 1]})"), "unknown class \"Broken\""},
        {scene(R"({"class": "UIView", "frame": [0, 0, 1]})"), "/frame: not four numbers"},
        {rootWith(R"("colour": "#000000")"), "/view: unknown key \"colour\""},
        {rootWith(R"("backgroundColor": "#12345G")"), "/backgroundColor: not a colour"},
        {rootWith(R"("subviews": [{"class": "UIView", "frame": [0, 0, 1, 1]}, 3])"), "/view/subviews/1: "},
        {item(R"({"icon": {"strokes": ["M0 0L"]}})"), "/icon/strokes/0: not SVG path data"},
        {scene(nested), "nested too deeply"},
        {R"({"initialController": {"class": "UINavigationController", "root": "first"}, "scenes": {}})",
         "/scenes: \"first\" is missing"},
    };
    for (const auto& [text, expected] : faults) {
        log.lines.clear();
        EXPECT_EQ(load(text), nullptr) << text;
        EXPECT_THAT(log.lines,
                    ElementsAre(testing::AllOf(HasSubstr("Test.storyboard.json: "), HasSubstr(expected))))
            << text;
    }
}

}  // namespace
