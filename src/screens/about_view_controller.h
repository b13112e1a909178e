// The screen about the app: rows that lead to the tour, to pages on the web and in the store.
// Which rows there are is the storyboard's; a row says by its tag where it leads.
#pragma once

#include "platform/ui/ui_table_view_controller.h"

class AboutViewController : public UITableViewController {
  public:
    void viewDidLoad() override;
    void didReceiveMemoryWarning() override;
    void tableViewDidSelectRowAtIndexPath(UITableView& tableView, IndexPath indexPath) override;
};
