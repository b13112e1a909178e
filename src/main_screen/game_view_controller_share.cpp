// Sharing: the view's picture and link, handed to the share sheet.
// Every share makes a new sheet; what each destination gets is in share_providers.cpp.
#include "main_screen/game_view_controller.h"
#include "main_screen/share_providers.h"
#include "platform/ui/ui_activity_view_controller.h"
#include "platform/ui/ui_device.h"
#include "platform/ui/ui_popover_controller.h"

namespace {

UIActivityItem itemOf(const UIImageRef& image) {
    return image ? UIActivityItem(image) : UIActivityItem();
}

UIActivityItem itemOf(const std::optional<NSURL>& url) {
    return url ? UIActivityItem(*url) : UIActivityItem();
}

}  // namespace

void GameViewController::shareScreen(Sender) {
    if (shareSheet) return;
    imageForSharing = renderedImage();
    const auto url = NSURL::URLWithString(coordinatesForDeeplink(_shader->fractalBounds()));
    const auto urlProvider = std::make_shared<OptionalURLProvider>(itemOf(url));
    const auto imageProvider = std::make_shared<OptionalImageProvider>(itemOf(imageForSharing));
    const auto subjectProvider = std::make_shared<ExtendedSubjectProvider>(url);
    const auto sheet =
        UIActivityViewController::initWithActivityItems({subjectProvider, imageProvider, urlProvider});
    sheet->setExcludedActivityTypes(
        {linkedInShareExtension, UIActivityTypeOpenInIBooks, addToReadingListActivity});
    if (UIDevice::currentDevice().userInterfaceIdiom() == UIUserInterfaceIdiom::phone) {
        presentViewController(sheet, true);
        return;
    }
    UIPopoverController::initWithContentViewController(sheet)->presentPopoverFromBarButtonItem(
        shareButton, UIPopoverArrowDirectionAny, true);
}
