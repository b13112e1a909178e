// The icon's dress, put on with each layout.
// The shadow lies outside of the icon, which therefore is not cut at its edge.
#include "screens/rounded_rect_ui_table_view_cell.h"

void RoundedRectUITableViewCell::awakeFromNib() {
    UITableViewCell::awakeFromNib();
}

void RoundedRectUITableViewCell::setSelected(bool selected, bool animated) {
    UITableViewCell::setSelected(selected, animated);
}

void RoundedRectUITableViewCell::layoutSubviews() {
    UITableViewCell::layoutSubviews();
    imageView()->setFrame(CGRectInset(imageView()->frame(), 1, 1));
    CALayer layer = imageView()->layer();
    layer.shadowColor = UIColor::systemGray();
    layer.cornerRadius = 8;
    layer.shadowOffset = {2, 2};
    layer.shadowOpacity = 1.0;
    layer.shadowRadius = 1;
    layer.masksToBounds = false;
    imageView()->setLayer(layer);
}
