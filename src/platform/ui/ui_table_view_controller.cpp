// The table may come from a storyboard; without one it is made here.
// Selected rows stay selected unless a subclass says otherwise.
#include "platform/ui/ui_table_view_controller.h"

std::shared_ptr<UITableView> UITableViewController::tableView() {
    return std::dynamic_pointer_cast<UITableView>(view());
}

void UITableViewController::loadView() {
    setView(std::make_shared<UITableView>());
}

void UITableViewController::viewDidLoad() {
    const auto self = std::static_pointer_cast<UITableViewController>(shared_from_this());
    if (const auto table = tableView()) table->setDelegate(std::weak_ptr<UITableViewDelegate>(self));
}

void UITableViewController::tableViewDidSelectRowAtIndexPath(UITableView&, IndexPath) {}

bool UITableViewController::keyPressed(const HostKeyPress& press) {
    const auto table = tableView();
    return (table && table->keyPressed(press)) || UIViewController::keyPressed(press);
}
