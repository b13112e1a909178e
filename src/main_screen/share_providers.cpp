// Who gets what. A destination that shows links by themselves gets the link beside the text, others within
// it. The types that the sheet leaves out are answered all the same.
#include "main_screen/share_providers.h"

#include "platform/foundation/ns_log.h"

namespace {

constexpr const char* announcement = "Discovered in Zentaro: ";

bool showsLinksBesideTexts(const UIActivityType& type) {
    return type == UIActivityTypeMail || type == UIActivityTypeMessage ||
           type == UIActivityTypePostToTwitter || type == UIActivityTypeCopyToPasteboard ||
           type == linkedInShareExtension;
}

}  // namespace

UIActivityItem ExtendedSubjectProvider::activityViewControllerItemForActivityType(
    UIActivityViewController&, const UIActivityType& type) {
    NSLog("Extended Subject Provider test against: %s", type.c_str());
    if (showsLinksBesideTexts(type)) return announcement;
    const char* const gap = type == UIActivityTypePostToFlickr ? "\n\n" : "";
    return std::string(announcement) + gap + (_url ? _url->absoluteString() : "(null)");
}

UIActivityItem OptionalImageProvider::activityViewControllerItemForActivityType(UIActivityViewController&,
                                                                                const UIActivityType& type) {
    if (type == linkedInShareExtension) return {};
    return placeholderItem();
}

UIActivityItem OptionalURLProvider::activityViewControllerItemForActivityType(UIActivityViewController&,
                                                                              const UIActivityType& type) {
    if (type == UIActivityTypePostToFacebook || type == linkedInShareExtension ||
        type == notesSharingExtension) {
        return {};
    }
    return placeholderItem();
}
