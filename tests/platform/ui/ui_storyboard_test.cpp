// Storyboards: the app's own one, and everything that can be wrong in one.
// Damaged layouts are told in one line and start nothing.
#include "platform/ui/ui_storyboard.h"

#include <gmock/gmock.h>

#include "platform/foundation/ns_bundle.h"
#include "platform/ui/ui_control.h"
#include "platform/ui/ui_toolbar.h"
#include "tests/support/headless_screen.h"

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

/// Takes every outlet and action but the one that there is not.
class OutletKeeper : public UIViewController {
  public:
    KeyValueTable outlets;
    std::map<std::string, std::any> connected;

    const KeyValueProperty* propertyForKey(const std::string& key) override {
        if (key == "noSuchOutlet") return nullptr;
        outlets[key] = KeyValueAccess<std::any>{
            {}, [this, key](const std::any& value) { return connected.insert_or_assign(key, value).second; }};
        return &outlets[key];
    }
    bool performAction(const std::string& name, const std::shared_ptr<KeyValueCoding>&) override {
        return name != "noSuchAction:";
    }
};

class UIStoryboardTest : public testing::Test {
  protected:
    ~UIStoryboardTest() override { NSBundle::mainBundle().setReader({}); }

    std::shared_ptr<OutletKeeper> load(const std::string& text) {
        NSBundle::mainBundle().setReader([text](const std::string& file) -> std::optional<std::string> {
            if (file != "Test.storyboard.json") return std::nullopt;
            return text;
        });
        UIStoryboard storyboard("Test");
        storyboard.registerController("Screen", [] { return std::make_shared<OutletKeeper>(); });
        storyboard.registerView("Broken", [] { return nullptr; });
        return std::dynamic_pointer_cast<OutletKeeper>(
            storyboard.instantiateInitialViewController(CGSizeMake(200, 100)));
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

    static std::string table(const std::string& row) {
        return scene(R"({"class": "UITableView", "frame": [0, 0, 9, 9], "sections": [{"rows": [)" + row +
                     "]}]}");
    }
    static std::string withSegue(const std::string& segue) {
        return R"({"initialController": {"class": "Screen", "segues": [)" + segue + "]}}";
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

TEST_F(UIStoryboardTest, ViewsFollowTheRealSize) {
    const auto screen = load(rootWith(
        R"("subviews": [{"class": "UIView", "frame": [10, 20, 80, 20], "autoresizing": ["width", "top"],
           "alpha": 0.5, "hidden": true, "backgroundColor": "#FF000080", "cornerRadius": 3,
           "accessibilityLabel": "Panel", "outlet": "panel"}])"));
    ASSERT_NE(screen, nullptr);
    EXPECT_EQ(screen->view()->frame(), CGRectMake(0, 0, 200, 100));
    const auto panel = std::any_cast<std::shared_ptr<UIView>>(screen->connected["panel"]);
    EXPECT_EQ(panel->frame(), CGRectMake(10, 70, 180, 20));
    EXPECT_EQ(panel->alpha(), 0.5);
    EXPECT_TRUE(panel->isHidden());
    EXPECT_EQ(panel->backgroundColor(), (UIColor{1, 0, 0, 128 / 255.0}));
    EXPECT_EQ(panel->cornerRadius(), 3);
    EXPECT_EQ(panel->accessibilityLabel(), "Panel");
}

TEST_F(UIStoryboardTest, UnknownOutletsAndActionsAreLoggedAndSkipped) {
    const auto screen = load(item(R"({"outlet": "noSuchOutlet", "action": "noSuchAction:"})"));
    ASSERT_NE(screen, nullptr);
    EXPECT_THAT(log.lines, ElementsAre(HasSubstr("/items/0/outlet: the controller has no outlet")));
    const auto bar = std::dynamic_pointer_cast<UIToolbar>(screen->view());
    bar->items().front()->sendAction();
    EXPECT_THAT(log.lines.back(), HasSubstr("no action \"noSuchAction:\""));
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
        {R"({"initialController": {"class": "Screen"}})", "\"view\" is missing"},
        {R"({"initialController": {"class": "Other", "view": {}}})", "unknown class \"Other\""},
        {scene(R"({"class": "UIView"})"), "/view: \"frame\" is missing"},
        {scene(R"({"class": "Nobody", "frame": [0, 0, 1, 1]})"), "/view/class: unknown class \"Nobody\""},
        {scene(R"({"class": "Broken", "frame": [0, 0, 1, 1]})"), "unknown class \"Broken\""},
        {scene(R"({"class": 1, "frame": [0, 0, 1, 1]})"), "/view/class: not a text"},
        {scene(R"({"class": "UIView", "frame": [0, 0, 1]})"), "/frame: not four numbers"},
        {scene(R"({"class": "UIView", "frame": [0, 0, 1, "w"]})"), "/frame/3: not a number"},
        {rootWith(R"("colour": "#000000")"), "/view: unknown key \"colour\""},
        {rootWith(R"("backgroundColor": "#12345G")"), "/backgroundColor: not a colour"},
        {rootWith(R"("hidden": 1)"), "/hidden: not true or false"},
        {rootWith(R"("autoresizing": ["middle"])"), "/autoresizing/0: unknown part"},
        {rootWith(R"("subviews": {})"), "/subviews: not a list"},
        {rootWith(R"("items": [])"), "/view: not a toolbar"},
        {rootWith(R"("subviews": [{"class": "UIView", "frame": [0, 0, 1, 1]}, 3])"), "/view/subviews/1: "},
        {item(R"({"space": "fixed"})"), "/items/0/space: not \"flexible\""},
        {item(R"({"icon": {"strokes": ["M0 0L"]}})"), "/icon/strokes/0: not SVG path data"},
        {item(R"({"titleIcons": {"x": {"strokes": ["oops"]}}})"), "/titleIcons/x/strokes/0: not SVG"},
        {scene(nested), "nested too deeply"},
        {rootWith(R"("sections": [])"), "/sections: not a table"},
        {table(R"({"class": "UIView"})"), "/sections/0/rows/0/class: not a cell"},
        {table(R"({"class": "UITableViewCell", "tag": 1.5})"), "/rows/0/tag: not a whole number"},
        {table(R"({"class": "UITableViewCell", "textKey": "nowhere"})"), "there is no text \"nowhere\""},
        {table(R"({"class": "UITableViewCell", "accessory": "star"})"), "/accessory: not \"disclosure\""},
        {R"({"initialController": {"class": "UINavigationController", "root": "first"}, "scenes": {}})",
         "/scenes: \"first\" is missing"},
        {R"({"initialController": {"class": "Screen", "root": "first"}, "scenes": {}})", "not a navigation"},
        {withSegue(R"({"identifier": "x", "kind": "fly", "scene": "y"})"), "/segues/0/kind: not \"present\""},
        {withSegue(R"({"identifier": "x", "kind": "push", "scene": "y"})"), "/: \"scenes\" is missing"},
        {withSegue(R"({"identifier": "x", "kind": "unwind"})"), "\"action\" is missing"},
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
