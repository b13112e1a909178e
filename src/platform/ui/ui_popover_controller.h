// A bubble over the screen with an arrow to the button that it belongs to.
// For screens that are larger than what it holds; a tap beside it or the escape key takes it away.
#pragma once

#include <memory>

#include "platform/ui/ui_toolbar.h"
#include "platform/ui/ui_view_controller.h"

/// Where the arrow may point; bits may be combined.
enum UIPopoverArrowDirection : uint32_t {
    UIPopoverArrowDirectionUp = 1,
    UIPopoverArrowDirectionDown = 2,
    UIPopoverArrowDirectionAny = 15,
};

class UIPopoverController {
  public:
    explicit UIPopoverController(std::shared_ptr<UIViewController> content) : _content(std::move(content)) {}
    static std::shared_ptr<UIPopoverController> initWithContentViewController(
        std::shared_ptr<UIViewController> content) {
        return std::make_shared<UIPopoverController>(std::move(content));
    }

    /// Shows the content at its preferred size, above or below the item's button, over that button's screen.
    /// It follows the button where the window's size changes, and lives on without this object. Nothing, with
    /// a log line, for an item that has no button on a window.
    void presentPopoverFromBarButtonItem(const std::shared_ptr<UIBarButtonItem>& item,
                                         uint32_t permittedArrowDirections, bool animated);

  private:
    std::shared_ptr<UIViewController> _content;
};
