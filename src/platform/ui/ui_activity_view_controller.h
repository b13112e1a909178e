// The share sheet: what is shared, and the destinations that this machine has for it.
// Destinations are the host's; where the system has a sheet of its own, that is shown instead.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "platform/host/share_destinations.h"
#include "platform/ui/ui_activity_item_provider.h"
#include "platform/ui/ui_activity_sheet_view.h"
#include "platform/ui/ui_view_controller.h"

class UIActivityViewController : public UIViewController {
  public:
    using Items = std::vector<std::shared_ptr<UIActivityItemProvider>>;

    explicit UIActivityViewController(Items items);
    /// The items in the order in which destinations get them.
    static std::shared_ptr<UIActivityViewController> initWithActivityItems(Items items) {
        return std::make_shared<UIActivityViewController>(std::move(items));
    }

    const Items& activityItems() const { return _items; }
    /// Never in the sheet, whatever the host has. Before the sheet is shown.
    void setExcludedActivityTypes(std::vector<UIActivityType> types) { _excluded = std::move(types); }
    const std::vector<UIActivityType>& excludedActivityTypes() const { return _excluded; }

    /// The host's destinations that have a use for the items and are not excluded, in the host's order.
    std::vector<ShareDestination> destinations() const;
    /// What a destination of that type receives, asked of the items in their order.
    SharedContent contentForActivityType(const UIActivityType& type);
    /// Sends the content; the sheet says what became of it, and goes if that was well. Nothing while one is
    /// being sent.
    void share(const ShareDestination& destination);

    void loadView() override;
    void viewWillAppear(bool animated) override;
    bool keyPressed(const HostKeyPress& press) override;
    bool presentsItself(const std::function<void()>& presentView) override;

  private:
    void answered(const ShareOutcome& outcome);

    Items _items;
    std::vector<UIActivityType> _excluded;
    std::shared_ptr<UIActivitySheetView> _sheet;
    bool _isBusy = false;
    /// The system's sheet failed: the app's own one takes its place, and says this.
    std::string _systemsMistake;
};
