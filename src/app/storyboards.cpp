// Registers everything under the names that the files use.
// Values come from the bundle's description, which must be there by then.
#include "app/storyboards.h"

#include "main_screen/game_view_controller.h"
#include "main_screen/link_host.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/gl/glk_view.h"
#include "screens/about_view_controller.h"
#include "screens/rounded_rect_ui_table_view_cell.h"
#include "screens/swallow_touches_view.h"

UIStoryboard makeMainStoryboard(bool hasStore) {
    UIStoryboard storyboard("Main");
    storyboard.registerController("GameViewController",
                                  [] { return std::make_shared<GameViewController>(); });
    storyboard.registerController("AboutViewController",
                                  [] { return std::make_shared<AboutViewController>(); });
    storyboard.registerView("GLKView", [] { return std::make_shared<GLKView>(); });
    storyboard.registerView("SwallowTouchesView", [] { return std::make_shared<SwallowTouchesView>(); });
    storyboard.registerView("RoundedRectUITableViewCell",
                            [] { return std::make_shared<RoundedRectUITableViewCell>(); });
    const NSBundle& bundle = NSBundle::mainBundle();
    storyboard.setValue("version", bundle.objectForInfoDictionaryKey("CFBundleShortVersionString"));
    storyboard.setValue("build", bundle.objectForInfoDictionaryKey("CFBundleVersion"));
    storyboard.setValue("webHost", linkHost());
    storyboard.setValue("host", ZENTARO_HOST);
    if (hasStore) storyboard.addFeature("store");
    return storyboard;
}
