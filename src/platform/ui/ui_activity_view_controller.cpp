// Asks the items, hands what they give to the host, and shows what the host answers.
// The host may answer long after the sheet has gone: nobody listens then.
#include "platform/ui/ui_activity_view_controller.h"

#include <algorithm>
#include <utility>

#include "platform/foundation/file_url.h"
#include "platform/foundation/ns_log.h"

namespace {

constexpr double secondsToRead = 1.1;

void add(SharedContent& content, const UIActivityItem& item) {
    if (const auto* text = std::get_if<std::string>(&item)) content.text += *text;
    if (const auto* image = std::get_if<UIImageRef>(&item)) content.image = *image;
    if (const auto* url = std::get_if<NSURL>(&item)) {
        auto path = pathOfFileURL(url->absoluteString());
        (path ? content.file : content.link) = path ? *std::move(path) : url->absoluteString();
    }
}

bool serves(const ShareDestination& destination, const SharedContent& content) {
    switch (destination.needs) {
        case ShareDestination::Need::anything:
            return true;
        case ShareDestination::Need::picture:
            return content.image != nullptr;
        case ShareDestination::Need::link:
            return !content.link.empty();
    }
    return false;
}

SharedContent placeholders(const UIActivityViewController::Items& items) {
    SharedContent content;
    for (const auto& item : items)
        add(content, item->placeholderItem());
    return content;
}

}  // namespace

UIActivityViewController::UIActivityViewController(Items items) : _items(std::move(items)) {
    setModalPresentationStyle(UIModalPresentationStyle::formSheet);
}

std::vector<ShareDestination> UIActivityViewController::destinations() const {
    const auto host = sharedShareDestinations();
    std::vector<ShareDestination> found = host ? host->destinations() : std::vector<ShareDestination>();
    const SharedContent content = placeholders(_items);
    std::erase_if(found, [&](const ShareDestination& one) {
        return std::count(_excluded.begin(), _excluded.end(), one.activityType) > 0 || !serves(one, content);
    });
    return found;
}

SharedContent UIActivityViewController::contentForActivityType(const UIActivityType& type) {
    SharedContent content;
    for (const auto& item : _items) {
        const std::string subject = item->activityViewControllerSubjectForActivityType(*this, type);
        if (content.subject.empty()) content.subject = subject;
        add(content, item->activityViewControllerItemForActivityType(*this, type));
    }
    return content;
}

void UIActivityViewController::loadView() {
    SharedContent content = placeholders(_items);
    for (const auto& item : _items) {
        if (content.subject.empty())
            content.subject = item->activityViewControllerSubjectForActivityType(*this, "");
    }
    _sheet = std::make_shared<UIActivitySheetView>(
        content, destinations(), [this](const ShareDestination& destination) { share(destination); },
        [this] { dismissViewControllerAnimated(true); });
    setView(_sheet);
    setPreferredContentSize(_sheet->sizeThatFits());
}

void UIActivityViewController::viewWillAppear(bool) {
    // A popover has a ground of its own.
    _sheet->setDrawsGround(!parentViewController());
    if (!_systemsMistake.empty()) _sheet->say(_systemsMistake, UIActivitySheetView::Tone::mistake);
}

bool UIActivityViewController::keyPressed(const HostKeyPress& press) {
    return _sheet->keyPressed(press) || UIViewController::keyPressed(press);
}

bool UIActivityViewController::presentsItself(const std::function<void()>& presentView) {
    const auto host = sharedShareDestinations();
    const auto system = host ? host->systemSheet() : std::nullopt;
    if (!system || !_systemsMistake.empty()) return false;
    const auto self = std::static_pointer_cast<UIActivityViewController>(shared_from_this());
    host->share(*system, contentForActivityType(system->activityType),
                [self, presentView](const ShareOutcome& outcome) {
                    if (outcome.isDone || outcome.message.empty()) return;
                    self->_systemsMistake = outcome.message;
                    presentView();
                });
    return true;
}

void UIActivityViewController::share(const ShareDestination& destination) {
    const auto host = sharedShareDestinations();
    if (!host || std::exchange(_isBusy, true)) return;
    _sheet->say(destination.title + " …", UIActivitySheetView::Tone::plain);
    host->share(destination, contentForActivityType(destination.activityType),
                [life = weak_from_this()](const ShareOutcome& outcome) {
                    if (!outcome.isDone && !outcome.message.empty())
                        NSLog("share: %s", outcome.message.c_str());
                    const auto self = std::static_pointer_cast<UIActivityViewController>(life.lock());
                    if (self) self->answered(outcome);
                });
}

void UIActivityViewController::answered(const ShareOutcome& outcome) {
    if (!outcome.isDone) {
        _isBusy = false;
        _sheet->say(outcome.message, UIActivitySheetView::Tone::mistake);
        return;
    }
    _sheet->say(outcome.message, UIActivitySheetView::Tone::success);
    const double wait = outcome.message.empty() ? 0 : secondsToRead;
    UIView::animateWithDuration(
        wait, 0, UIViewAnimationOptionNone, [] {},
        [life = weak_from_this()](bool) {
            if (const auto self = life.lock()) self->dismissViewControllerAnimated(true);
        });
}
