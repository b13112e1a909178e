// Sharing: what each destination receives, what the sheet shows, and what becomes of a choice.
// A host with scripted destinations stands for the machine's own.
#include <gmock/gmock.h>

#include "main_screen/share_providers.h"
#include "platform/ui/ui_accessibility.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "tests/support/headless_screen.h"

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Words = std::vector<std::string>;

constexpr const char* link = "http://zentaro.example/julia/-1.000000/-1.000000/1.000000/1.000000";

TEST(ShareProviders, EachDestinationReceivesWhatSuitsIt) {
    struct Case {
        UIActivityType type;
        std::string text;  ///< after the announcement
        bool image;
        bool url;
    };
    const Case cases[] = {
        {UIActivityTypeMail, "", true, true},
        {UIActivityTypeMessage, "", true, true},
        {UIActivityTypePostToTwitter, "", true, true},
        {UIActivityTypeCopyToPasteboard, "", true, true},
        {UIActivityTypePostToFlickr, std::string("\n\n") + link, true, true},
        {UIActivityTypePostToFacebook, link, true, false},
        {notesSharingExtension, link, true, false},
        {linkedInShareExtension, "", false, false},
        {UIActivityTypeSaveToCameraRoll, link, true, true},
        {"any.other", link, true, true},
    };
    const LogCapture log;
    const UIImageRef image = UIImage::imageWithGlyph({}, {1, 1});
    const auto url = NSURL::URLWithString(link);
    UIActivityViewController sheet(
        UIActivityViewController::Items{std::make_shared<ExtendedSubjectProvider>(url),
                                        std::make_shared<OptionalImageProvider>(UIActivityItem(image)),
                                        std::make_shared<OptionalURLProvider>(UIActivityItem(*url))});
    for (const Case& c : cases) {
        const SharedContent content = sheet.contentForActivityType(c.type);
        EXPECT_EQ(content.subject, "Discovered in Zentaro") << c.type;
        EXPECT_EQ(content.text, "Discovered in Zentaro: " + c.text) << c.type;
        EXPECT_EQ(content.image, c.image ? image : nullptr) << c.type;
        EXPECT_EQ(content.link, c.url ? link : "") << c.type;
        EXPECT_EQ(log.lines.back(), "Extended Subject Provider test against: " + c.type);
    }
    UIActivityViewController without(
        UIActivityViewController::Items{std::make_shared<ExtendedSubjectProvider>(std::nullopt),
                                        std::make_shared<OptionalImageProvider>(UIActivityItem()),
                                        std::make_shared<OptionalURLProvider>(UIActivityItem())});
    const SharedContent content = without.contentForActivityType("any.other");
    EXPECT_EQ(content.text, "Discovered in Zentaro: (null)");
    EXPECT_EQ(content.link, "");
}

TEST(SharedContentTest, TextsForDestinationsWithOneAndNamesOfFiles) {
    SharedContent content{"", "Discovered in Zentaro: ", link, nullptr};
    EXPECT_EQ(content.textWithLink(), std::string("Discovered in Zentaro: ") + link);
    content.text += link;
    EXPECT_EQ(content.textWithLink(), content.text);
    content.text = "Look";
    EXPECT_EQ(content.textWithLink(), std::string("Look\n") + link);
    struct Case {
        std::string link, name;
    };
    const Case cases[] = {{link, "Zentaro julia -1.000000 -1.000000 1.000000 1.000000"},
                          {"", "Zentaro"},
                          {"http://a", "Zentaro"},
                          {"http://a/../..\\%00\"é", "Zentaro .. .. 00"},
                          {"http://a/" + std::string(500, 'x'), "Zentaro " + std::string(112, 'x')}};
    for (const Case& c : cases)
        EXPECT_EQ((SharedContent{"", "", c.link, nullptr}).fileName(), c.name);
}

class ScriptedDestinations : public ShareDestinations {
  public:
    std::vector<ShareDestination> destinations() override { return present; }
    void share(const ShareDestination& destination, const SharedContent& content, Answer answer) override {
        shared.push_back(destination.name + ": " + content.textWithLink());
        answers.push_back(std::move(answer));
    }
    std::optional<ShareDestination> systemSheet() override { return system; }

    std::vector<ShareDestination> present{
        {"copy", UIActivityTypeCopyToPasteboard, "Copy", ShareIcon::copy, ShareDestination::Need::anything},
        {"linked", linkedInShareExtension, "LinkedIn", ShareIcon::people, ShareDestination::Need::anything},
        {"books", UIActivityTypeOpenInIBooks, "Books", ShareIcon::people, ShareDestination::Need::anything},
        {"list", addToReadingListActivity, "List", ShareIcon::browser, ShareDestination::Need::link},
        {"save", UIActivityTypeSaveToCameraRoll, "Save", ShareIcon::picture,
         ShareDestination::Need::picture}};
    std::optional<ShareDestination> system;
    Words shared;
    std::vector<Answer> answers;
};

class ShareScreen : public HeadlessScreenTest {
  protected:
    void SetUp() override { setSharedShareDestinations(machine); }
    void TearDown() override { setSharedShareDestinations(nullptr); }

    void open(CGSize size) {
        launch({size, 1});
        pass(0.1);
        screen->shareButton->sendAction();
        pass(0.6);
    }
    /// In few frames: drawing them is what takes long.
    void pass(double seconds) {
        for (int i = 0; i < 4; ++i)
            host->step(seconds / 4);
    }
    UIWindow& window() const { return *screen->view()->window(); }
    CGRect frameOf(const std::string& label) const {
        for (const auto& element : accessibilityElements(window())) {
            if (element.label == label) return element.frame;
        }
        return CGRectNull;
    }
    void tapOn(const std::string& label) {
        const CGRect frame = frameOf(label);
        host->tap({CGRectGetMidX(frame), CGRectGetMidY(frame)});
    }
    bool isOpen() const { return screen->presentedViewController() != nullptr; }

    std::shared_ptr<ScriptedDestinations> machine = std::make_shared<ScriptedDestinations>();
};

TEST_F(ShareScreen, ASheetFromBelowOnPhonesAndAPopoverAtTheButtonElsewhere) {
    struct Case {
        CGSize size;
        bool isPopover;
    };
    for (const Case& c : {Case{{844, 390}, false}, Case{{1180, 820}, true}, Case{{1280, 720}, true}}) {
        open(c.size);
        const auto sheet = screen->presentedViewController();
        ASSERT_TRUE(sheet);
        EXPECT_EQ(std::dynamic_pointer_cast<UIActivityViewController>(sheet) == nullptr, c.isPopover);
        EXPECT_THAT(labels(), Contains("Copy"));
        EXPECT_THAT(labels(), Contains("Save"));
        for (const char* excluded : {"LinkedIn", "Books", "List", "Share"})
            EXPECT_THAT(labels(), Not(Contains(excluded)));
        EXPECT_TRUE(screen->imageForSharing);
        EXPECT_EQ(screen->shareSheet, nullptr);
        const CGFloat below = c.size.height - CGRectGetMaxY(frameOf("Save"));
        EXPECT_EQ(below < 60, !c.isPopover) << below;
        screen->shareScreen(screen->shareButton.get());
        EXPECT_EQ(screen->presentedViewController(), sheet) << "one at a time";
        host->tap({c.size.width - 20, 20});
        EXPECT_FALSE(isOpen());
    }
}

TEST_F(ShareScreen, AChoiceIsSentOnceAndTheSheetSaysWhatBecameOfIt) {
    open({800, 600});
    tapOn("Copy");
    tapOn("Save");
    EXPECT_THAT(machine->shared, ElementsAre(HasSubstr("copy: Discovered in Zentaro: http://")));
    machine->answers.back()({false, "the disk is full"});
    pass(3);
    EXPECT_TRUE(isOpen());
    EXPECT_THAT(labels(), Contains("the disk is full"));

    host->press(HostKey::right);
    host->press(HostKey::right);
    host->press(HostKey::returnKey);
    EXPECT_THAT(machine->shared, ElementsAre(testing::_, HasSubstr("save: ")));
    machine->answers.back()({true, "Saved"});
    pass(0.3);
    EXPECT_THAT(labels(), Contains("Saved"));
    pass(3);
    EXPECT_FALSE(isOpen());

    open({800, 600});
    tapOn("Copy");
    host->press(HostKey::escape);
    pass(1);
    machine->answers.back()({false, "too late"});
    EXPECT_FALSE(isOpen());
    EXPECT_THAT(labels(), Not(Contains("too late")));
}

TEST_F(ShareScreen, TheSystemsOwnSheetIsShownInThePlaceOfOurs) {
    machine->system = machine->present.front();
    machine->system->activityType = UIActivityTypeMessage;
    open({844, 390});
    EXPECT_FALSE(isOpen());
    ASSERT_EQ(machine->answers.size(), 1U);
    machine->answers.back()({false, ""});
    EXPECT_FALSE(isOpen()) << "the user thought better of it";
    for (const CGSize size : {CGSizeMake(844, 390), CGSizeMake(800, 600)}) {
        open(size);
        machine->answers.back()({false, "not allowed"});
        pass(1);
        EXPECT_TRUE(isOpen());
        EXPECT_THAT(labels(), Contains("not allowed"));
    }
}

TEST_F(ShareScreen, UnderTheSheetAFlightEndsAndNoneBegins) {
    open({320, 180});
    host->press(HostKey::escape);
    host->play(1);
    screen->hideMenu(false);
    host->play(0.5);
    ASSERT_TRUE(screen->tween);
    host->type("s");
    host->play(8);
    EXPECT_TRUE(isOpen());
    EXPECT_FALSE(screen->tween);
    host->press(HostKey::escape);
    host->play(0.5);
    EXPECT_TRUE(screen->tween) << "the pilot goes on";
}

TEST_F(ShareScreen, AMachineWithoutDestinationsSaysSo) {
    setSharedShareDestinations(nullptr);
    open({1180, 820});
    EXPECT_THAT(labels(), Contains("Nothing on this machine can share."));
}

}  // namespace
