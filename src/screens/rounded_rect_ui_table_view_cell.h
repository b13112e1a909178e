// A row whose icon has round corners and throws a soft shadow.
// Everything else is a cell's own.
#pragma once

#include "platform/ui/ui_table_view_cell.h"

class RoundedRectUITableViewCell : public UITableViewCell {
  public:
    void awakeFromNib() override;
    void setSelected(bool selected, bool animated) override;
    void layoutSubviews() override;
};
