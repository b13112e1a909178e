// What each destination receives of a shared view: text, picture and link in a combination that suits it.
// One provider for each of the three; destinations are known by their activity types.
#pragma once

#include <optional>
#include <string>

#include "platform/ui/ui_activity_item_provider.h"

inline const UIActivityType linkedInShareExtension = "com.linkedin.LinkedIn.ShareExtension";
inline const UIActivityType addToReadingListActivity = "com.apple.UIKit.activity.AddToReadingList";
inline const UIActivityType notesSharingExtension = "com.apple.mobilenotes.SharingExtension";

/// The announcement; with the link where no link comes beside it.
class ExtendedSubjectProvider : public UIActivityItemProvider {
  public:
    explicit ExtendedSubjectProvider(std::optional<NSURL> url)
        : UIActivityItemProvider(std::string()), _url(std::move(url)) {}

    UIActivityItem activityViewControllerItemForActivityType(UIActivityViewController& controller,
                                                             const UIActivityType& type) override;
    std::string activityViewControllerSubjectForActivityType(UIActivityViewController&,
                                                             const UIActivityType&) override {
        return "Discovered in Zentaro";
    }
    const std::optional<NSURL>& url() const { return _url; }
    void setUrl(std::optional<NSURL> url) { _url = std::move(url); }

  private:
    std::optional<NSURL> _url;
};

class OptionalImageProvider : public UIActivityItemProvider {
  public:
    using UIActivityItemProvider::UIActivityItemProvider;
    UIActivityItem activityViewControllerItemForActivityType(UIActivityViewController& controller,
                                                             const UIActivityType& type) override;
};

class OptionalURLProvider : public UIActivityItemProvider {
  public:
    using UIActivityItemProvider::UIActivityItemProvider;
    UIActivityItem activityViewControllerItemForActivityType(UIActivityViewController& controller,
                                                             const UIActivityType& type) override;
};
