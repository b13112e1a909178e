// A screen that is a table.
// It is its table's delegate, and hands keys on to it.
#pragma once

#include "platform/ui/ui_table_view.h"
#include "platform/ui/ui_view_controller.h"

class UITableViewController : public UIViewController, public UITableViewDelegate {
  public:
    /// Its view.
    std::shared_ptr<UITableView> tableView();

    void loadView() override;
    void viewDidLoad() override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView, IndexPath indexPath) override;
    bool keyPressed(const HostKeyPress& press) override;
};
