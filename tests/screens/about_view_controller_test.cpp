// The About screen by finger, wheel, key and name: where each row leads, how the list scrolls, the ways back.
// The storyboard is the app's own, with a store and without.
#include "screens/about_view_controller.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>
#include <set>

#include "app/storyboards.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_locale.h"
#include "platform/ui/ui_accessibility.h"
#include "platform/ui/ui_navigation_controller.h"
#include "rating/irate.h"
#include "screens/rounded_rect_ui_table_view_cell.h"
#include "tests/support/headless_screen.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

constexpr const char* languages[] = {"en", "de", "fr",      "es",      "pt", "it",
                                     "ja", "ko", "zh-Hans", "zh-Hant", "ru", "ar"};

class AboutScreen : public HeadlessScreenTest {
  protected:
    ~AboutScreen() override { NSLocale::setCurrentLocale({}); }

    void open(bool hasStore = true, CGSize size = {844, 390}) {
        launch({size, 1});
        stack = std::dynamic_pointer_cast<UINavigationController>(
            makeMainStoryboard(hasStore).storyboardWithName("About").instantiateInitialViewController(size));
        ASSERT_TRUE(stack);
        screen->presentViewController(stack, true);
        look();
    }
    void look() {
        host->play(0.6);
        ASSERT_TRUE(stack);
        about = std::dynamic_pointer_cast<AboutViewController>(stack->topScreen());
        ASSERT_TRUE(about);
        table = about->tableView();
    }

    std::vector<IndexPath> rows() const {
        std::vector<IndexPath> found;
        for (std::size_t i = 0; i < table->sections().size(); ++i)
            for (std::size_t row = 0; row < table->sections()[i].rows.size(); ++row)
                found.push_back({i, row});
        return found;
    }
    std::vector<int64_t> tags() const {
        std::vector<int64_t> found;
        for (const IndexPath& row : rows())
            found.push_back(table->cellForRowAtIndexPath(row)->tag());
        return found;
    }
    IndexPath rowWithTag(int64_t tag) const {
        for (const IndexPath& row : rows())
            if (table->cellForRowAtIndexPath(row)->tag() == tag) return row;
        ADD_FAILURE() << "no row has the tag " << tag;
        return {};
    }
    CGPoint middleOf(IndexPath row) const {
        const UIView& cell = *table->cellForRowAtIndexPath(row);
        const CGRect place = cell.convertRectToWindow(cell.bounds());
        return {CGRectGetMidX(place), CGRectGetMidY(place)};
    }
    const std::vector<std::string>& opened() const { return host->window().openedURLs(); }
    CGFloat offset() const { return table->contentOffset().y; }
    CGFloat lastOffset() const { return table->contentSize().height - table->bounds().size.height; }

    std::shared_ptr<UINavigationController> stack;
    std::shared_ptr<AboutViewController> about;
    std::shared_ptr<UITableView> table;
};

}  // namespace

TEST_F(AboutScreen, EachTagLeadsWhereItSaysAndItsRowIsDeselected) {
    open();
    iRate::sharedInstance()->setRatingsURL("https://rate.example/zentaro");
    const std::string store = "https://" + StoreConfiguration::ofBuild().host + "/us/app/";
    const std::pair<int64_t, std::string> cases[] = {
        {2, "https://zentaro.example/"},
        {3, "https://rate.example/zentaro"},
        {4, store + "tessaric/id1482730965?mt=8"},
        {5, store + "swaybell/id1490157386?mt=8"},
        {6, store + "murmurel/id1494381520?mt=8"},
        {7, store + "sandrime/id1498602417?mt=8"},
        {8, store + "pleatfold/id1501273894?mt=8"},
        {99, store + "knotwright/id1507364218?mt=8"},
        {0, ""},
        {9, ""},
        {-1, ""},
    };
    const IndexPath row = rowWithTag(2);
    const auto cell = table->cellForRowAtIndexPath(row);
    std::vector<std::string> expected;
    for (const auto& [tag, url] : cases) {
        SCOPED_TRACE(tag);
        cell->setTag(tag);
        table->activateRowAtIndexPath(row);
        if (!url.empty()) expected.push_back(url);
        EXPECT_EQ(opened(), expected);
        EXPECT_FALSE(cell->isSelected());
        EXPECT_EQ(table->indexPathForSelectedRow(), std::nullopt);
        EXPECT_GT(cell->subviews().front()->presentationAlpha(), 0.9) << "with animation";
        host->play(0.6);
        EXPECT_EQ(cell->subviews().front()->presentationAlpha(), 0);
    }
}

TEST_F(AboutScreen, TheInfoButtonOpensItAndReplayEndsInTheTour) {
    launch({{844, 390}, 1});
    screen->infoButton->sendAction();
    stack = std::dynamic_pointer_cast<UINavigationController>(screen->presentedViewController());
    look();
    host->tap(middleOf(rowWithTag(1)));
    host->play(0.6);
    EXPECT_EQ(screen->presentedViewController(), nullptr);
    EXPECT_THAT(log.lines, Contains("Popping back to this view controller!"));
    ASSERT_TRUE(screen->coachMarksView);
    EXPECT_TRUE(screen->coachMarksView->isRunning());
}

TEST_F(AboutScreen, OnlyAnAppInAStoreHasRowsThatLeadThere) {
    open(true);
    EXPECT_THAT(tags(), ElementsAre(1, 2, 3, 4, 5, 6, 7, 8, 99, 0, 0));
    open(false);
    EXPECT_THAT(tags(), ElementsAre(1, 2, 0, 0));
    EXPECT_EQ(table->sections().size(), 2U) << "a section without rows has no header either";
}

TEST_F(AboutScreen, EveryLanguageHasEveryTextAndFillsItsPlaces) {
    std::set<std::string> english;
    for (const char* const language : languages) {
        SCOPED_TRACE(language);
        NSLocale::setCurrentLocale({"", {language}});
        log.lines.clear();
        open();
        ASSERT_TRUE(table);
        EXPECT_THAT(log.lines, Not(Contains(HasSubstr("no text"))));
        for (const IndexPath& row : rows())
            EXPECT_THAT(table->cellForRowAtIndexPath(row)->accessibilityLabel(), Not(HasSubstr("{")));
        const auto text = NSBundle::mainBundle().stringForResource(
            std::string(language) + ".lproj/Localizable.strings", "json");
        ASSERT_TRUE(text);
        std::set<std::string> keys;
        const auto texts = nlohmann::json::parse(*text);
        for (const auto& [key, value] : texts.items())
            if (key != "layout direction" && !value.get<std::string>().empty()) keys.insert(key);
        if (english.empty()) english = keys;
        EXPECT_EQ(keys, english);
        const bool mirrored = std::string_view(language) == "ar";
        const auto& cell = *table->cellForRowAtIndexPath({0, 0});
        EXPECT_EQ(cell.imageView()->frame().origin.x > cell.textLabel()->frame().origin.x, mirrored);
    }
}

TEST_F(AboutScreen, AFingerThatScrollsSelectsNothingAndATapDoes) {
    open();
    const CGPoint place = middleOf({0, 1});
    host->drag(place, {place.x, place.y - 60}, 0.3);
    EXPECT_GT(offset(), 30);
    host->play(3);
    EXPECT_THAT(opened(), IsEmpty());
    EXPECT_FALSE(table->isDecelerating());
    table->setContentOffset({}, false);
    host->land(1, place);
    host->play(0.2);
    EXPECT_TRUE(table->cellForRowAtIndexPath({0, 1})->isHighlighted());
    host->slide({{1, {place.x + 30, place.y}}}, 0.2);
    EXPECT_FALSE(table->cellForRowAtIndexPath({0, 1})->isHighlighted()) << "it has moved on";
    host->lift(1);
    EXPECT_THAT(opened(), IsEmpty());
    host->play(1);
    host->tap(place);
    EXPECT_THAT(opened(), ElementsAre("https://zentaro.example/"));
}

TEST_F(AboutScreen, AThrownListGlidesOnStopsAtItsEdgeAndATapHoldsIt) {
    open();
    host->drag({400, 340}, {400, 260}, 0.15);
    const CGFloat thrown = offset();
    host->play(0.2);
    EXPECT_GT(offset(), thrown + 50);
    EXPECT_TRUE(table->isDecelerating());
    const CGPoint hold{400, 200};
    host->tap(hold);
    const CGFloat held = offset();
    host->play(0.5);
    EXPECT_EQ(offset(), held) << "a finger stops it";
    EXPECT_THAT(opened(), IsEmpty()) << "and selects nothing";

    for (int i = 0; i < 4; ++i)
        host->drag({400, 380}, {400, 80}, 0.05);
    CGFloat farthest = 0;
    for (int i = 0; i < 240; ++i) {
        host->step();
        farthest = std::max(farthest, offset());
    }
    EXPECT_GT(farthest, lastOffset()) << "it bounces";
    EXPECT_LT(farthest, lastOffset() + table->bounds().size.height) << "and never leaves the screen";
    EXPECT_EQ(offset(), lastOffset());

    table->setContentOffset({}, false);
    host->land(1, {400, 100});
    host->slide({{1, {400, 300}}}, 0.2);
    EXPECT_LT(offset(), -50);
    EXPECT_GT(offset(), -200) << "beyond the edge it follows less";
    host->lift(1);
    host->play(2);
    EXPECT_EQ(offset(), 0);
}

TEST_F(AboutScreen, WheelsAndTrackpadsScroll) {
    open();
    host->wheel({400, 200}, -1);
    host->play(1);
    EXPECT_NEAR(offset(), 100, 1);
    host->wheel({400, 200}, -0.25);
    EXPECT_NEAR(offset(), 125, 1) << "at once";
    host->wheel({400, 200}, 20);
    host->play(1);
    EXPECT_EQ(offset(), 0);
    EXPECT_EQ(bounds(), top()) << "nothing moves below";
}

TEST_F(AboutScreen, KeysGoFromRowToRowSelectAndLeadBack) {
    open();
    host->press(HostKey::tab);
    host->press(HostKey::down);
    EXPECT_EQ(table->focusedRow(), (IndexPath{0, 1}));
    host->press(HostKey::returnKey);
    EXPECT_THAT(opened(), ElementsAre("https://zentaro.example/"));
    host->press(HostKey::end);
    host->play(1);
    EXPECT_EQ(table->focusedRow(), rows()[rows().size() - 2]);
    EXPECT_EQ(offset(), lastOffset()) << "the row is in sight, and what stands behind it";
    host->press(HostKey::space);
    host->play(0.6);
    EXPECT_EQ(stack->viewControllers().size(), 2U) << "the licences";
    const auto licences = std::dynamic_pointer_cast<UITableViewController>(stack->topScreen());
    host->press(HostKey::pageDown);
    host->play(1);
    EXPECT_GT(licences->tableView()->contentOffset().y, 200) << "without rows to choose, keys scroll";
    EXPECT_EQ(stack->stepsBack(), 2U);
    host->press(HostKey::back);
    host->play(0.6);
    EXPECT_EQ(stack->topScreen(), about);
    EXPECT_EQ(table->superview()->subviews().size(), 1U);
    host->press(HostKey::escape);
    host->play(0.6);
    EXPECT_EQ(screen->presentedViewController(), nullptr);
    host->type("f");
    EXPECT_EQ(screen->fractalType(), 2) << "the screen below has its keys again";
}

TEST_F(AboutScreen, ScreenReadersFindEveryRowAsAButtonInOrder) {
    open();
    std::vector<std::string> buttons;
    std::shared_ptr<UIView> lastRow;
    std::string last;
    for (const UIAccessibilityElement& element : accessibilityElements(*screen->view()->window())) {
        last = element.label;
        if (element.traits != UIAccessibilityTraitButton) continue;
        buttons.push_back(element.label);
        lastRow = element.view;
    }
    ASSERT_EQ(buttons.size(), 11U) << "the ones that are scrolled out of sight too";
    EXPECT_EQ(buttons[0], "Close");
    EXPECT_EQ(buttons[1], "Replay the introduction, What each button does, one after the other");
    EXPECT_EQ(last, "Version 0.1.0 (1)") << "a text: it leads nowhere";
    lastRow->accessibilityElementDidBecomeFocused();
    host->play(1);
    EXPECT_EQ(offset(), lastOffset()) << "who comes to a row sees it";
    lastRow->accessibilityElementDidLoseFocus();
    EXPECT_EQ(table->focusedRow(), std::nullopt);
    EXPECT_TRUE(table->cellForRowAtIndexPath({0, 1})->accessibilityActivate());
    EXPECT_THAT(opened(), ElementsAre("https://zentaro.example/"));
}

TEST_F(AboutScreen, IconsAreRoundWithAShadowThatIsNotCut) {
    open();
    const auto cell = table->cellForRowAtIndexPath({0, 0});
    const CGRect before = cell->imageView()->frame();
    cell->setNeedsLayout();
    host->step();
    EXPECT_EQ(cell->imageView()->frame(), before) << "layouts do not add up";
    UITableViewCell plain;
    plain.imageView()->setImage(cell->imageView()->image());
    plain.setFrame(cell->frame());
    plain.layoutSubviews();
    EXPECT_EQ(before, CGRectInset(plain.imageView()->frame(), 1, 1));
    CALayer expected;
    expected.backgroundColor = cell->imageView()->layer().backgroundColor;
    expected.shadowColor = UIColor::systemGray();
    expected.shadowOffset = {2, 2};
    expected.shadowOpacity = 1;
    expected.shadowRadius = 1;
    expected.cornerRadius = 8;
    EXPECT_EQ(cell->imageView()->layer(), expected);
}

TEST_F(AboutScreen, RowsFollowTheScreensSizeAndKeepClearOfCoveredEdges) {
    open();
    host->press(HostKey::end);
    host->play(1);
    for (const CGSize size : {CGSize{400, 240}, CGSize{1280, 720}, CGSize{844, 390}, CGSize{844, 600}}) {
        // On its way to the end, which is elsewhere then.
        host->press(HostKey::home);
        host->press(HostKey::end);
        host->step();
        host->resize(size);
        host->handle(HostSafeArea{{10, 47, 21, 30}});
        host->play(3);
        EXPECT_LE(offset(), std::max(lastOffset(), 0.0));
        for (const IndexPath& row : rows()) {
            const UIView& cell = *table->cellForRowAtIndexPath(row);
            const CGRect place = cell.convertRectToWindow(cell.bounds());
            EXPECT_GE(CGRectGetMinX(place), 47);
            EXPECT_LE(CGRectGetMaxX(place), size.width - 30);
        }
    }
    EXPECT_GE(table->convertPointToWindow({}).y, 10);
}
