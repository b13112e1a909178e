// The content as the page needs it; web/share.js does the rest.
// The call is made within the user's tap: browsers share and copy for nobody else.
#include "hosts/web/web_share.h"

#include <utility>

#include "hosts/web/web_page.h"

namespace {

using Need = ShareDestination::Need;

constexpr const char* mailName = "mail";

}  // namespace

std::vector<ShareDestination> WebShare::destinations() {
    return {
        {"copy", "com.apple.UIKit.activity.CopyToPasteboard", "Copy", ShareIcon::copy, Need::anything},
        {"download", "com.apple.UIKit.activity.SaveToCameraRoll", "Download", ShareIcon::picture,
         Need::picture},
        {mailName, "com.apple.UIKit.activity.Mail", "Mail", ShareIcon::mail, Need::anything},
    };
}

/// What people choose there is mostly a message to somebody; which one, browsers do not tell.
std::optional<ShareDestination> WebShare::systemSheet() {
    if (!WebPage::hasShareSheet()) return std::nullopt;
    return ShareDestination{"sheet", "com.apple.UIKit.activity.Message", "Share", ShareIcon::people,
                            Need::anything};
}

void WebShare::share(const ShareDestination& destination, const SharedContent& content, Answer answer) {
    const int number = ++_lastNumber;
    _answers[number] = std::move(answer);
    const bool carriesPicture = destination.name != mailName;
    const auto picture =
        carriesPicture ? UIImagePNGRepresentation(content.image).value_or(NSData()) : NSData();
    WebPage::share(number, destination.name, content, picture);
}

void WebShare::answered(int number, const ShareOutcome& outcome) {
    const auto waiting = _answers.extract(number);
    if (!waiting.empty()) waiting.mapped()(outcome);
}
