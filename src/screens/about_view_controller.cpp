// What each tag does. A tag that is listed more than once stands for its first entry.
// Whether the system opened an address interests nobody.
#include "screens/about_view_controller.h"

#include <algorithm>
#include <iterator>
#include <string>

#include "main_screen/link_host.h"
#include "platform/ui/ui_application.h"
#include "rating/irate.h"

namespace {

constexpr int64_t replayTag = 1;
constexpr int64_t siteTag = 2;
constexpr int64_t rateTag = 3;

struct StorePage {
    int64_t tag;
    const char* slug;
    const char* identifier;
};

/// The maker's other apps, in the order in which tags are looked up.
constexpr StorePage storePages[] = {
    {4, "tessaric", "1482730965"},    {99, "knotwright", "1507364218"}, {99, "cellstead", "1519820743"},
    {99, "ripplemere", "1523946071"}, {5, "swaybell", "1490157386"},    {7, "sandrime", "1498602417"},
    {8, "pleatfold", "1501273894"},   {6, "murmurel", "1494381520"},
};

void open(const std::string& address) {
    UIApplication* const application = UIApplication::sharedApplication();
    const auto url = NSURL::URLWithString(address);
    if (application && url) application->openURL(*url, [](bool) {});
}

void openStorePage(int64_t tag) {
    const auto* const page = std::find_if(std::begin(storePages), std::end(storePages),
                                          [tag](const StorePage& each) { return each.tag == tag; });
    if (page == std::end(storePages)) return;
    open("https://" + StoreConfiguration::ofBuild().host + "/us/app/" + page->slug + "/id" +
         page->identifier + "?mt=8");
}

}  // namespace

void AboutViewController::viewDidLoad() {
    UITableViewController::viewDidLoad();
}

void AboutViewController::didReceiveMemoryWarning() {
    UITableViewController::didReceiveMemoryWarning();
}

void AboutViewController::tableViewDidSelectRowAtIndexPath(UITableView& tableView, IndexPath indexPath) {
    const auto cell = tableView.cellForRowAtIndexPath(indexPath);
    const int64_t tag = cell ? cell->tag() : 0;
    if (tag == replayTag) {
        performSegueWithIdentifier("replayIntroduction", shared_from_this());
    } else if (tag == siteTag) {
        open("https://" + linkHost() + "/");
    } else if (tag == rateTag) {
        iRate::sharedInstance()->openRatingsPageInAppStore();
    } else {
        openStorePage(tag);
    }
    tableView.deselectRowAtIndexPath(indexPath, true);
}
