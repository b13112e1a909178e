// Something to share that is decided for each destination when the user has chosen it.
// The placeholder tells the sheet beforehand what kind of thing it will be.
#pragma once

#include <string>
#include <utility>
#include <variant>

#include "platform/foundation/ns_url.h"
#include "platform/graphics/ui_image.h"

class UIActivityViewController;

/// By which a destination is known.
using UIActivityType = std::string;

inline const UIActivityType UIActivityTypePostToFacebook = "com.apple.UIKit.activity.PostToFacebook";
inline const UIActivityType UIActivityTypePostToTwitter = "com.apple.UIKit.activity.PostToTwitter";
inline const UIActivityType UIActivityTypePostToFlickr = "com.apple.UIKit.activity.PostToFlickr";
inline const UIActivityType UIActivityTypeMessage = "com.apple.UIKit.activity.Message";
inline const UIActivityType UIActivityTypeMail = "com.apple.UIKit.activity.Mail";
inline const UIActivityType UIActivityTypeCopyToPasteboard = "com.apple.UIKit.activity.CopyToPasteboard";
inline const UIActivityType UIActivityTypeSaveToCameraRoll = "com.apple.UIKit.activity.SaveToCameraRoll";
inline const UIActivityType UIActivityTypeOpenInIBooks = "com.apple.UIKit.activity.OpenInIBooks";

/// Nothing, a text, a picture or a link.
using UIActivityItem = std::variant<std::monostate, std::string, UIImageRef, NSURL>;

class UIActivityItemProvider {
  public:
    explicit UIActivityItemProvider(UIActivityItem placeholder) : _placeholder(std::move(placeholder)) {}
    virtual ~UIActivityItemProvider() = default;

    const UIActivityItem& placeholderItem() const { return _placeholder; }
    /// What the destination receives; nothing for nothing.
    virtual UIActivityItem activityViewControllerItemForActivityType(UIActivityViewController&,
                                                                     const UIActivityType&) {
        return _placeholder;
    }
    /// Empty for none of its own.
    virtual std::string activityViewControllerSubjectForActivityType(UIActivityViewController&,
                                                                     const UIActivityType&) {
        return {};
    }

  private:
    UIActivityItem _placeholder;
};
