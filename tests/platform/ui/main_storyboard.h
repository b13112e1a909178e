// The app's own storyboard with stand-ins for the classes that need OpenGL.
// So that its layout is tested as it ships.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "hosts/native/resource_reader.h"
#include "platform/foundation/ns_bundle.h"
#include "platform/ui/ui_storyboard.h"
#include "platform/ui/ui_toolbar.h"
#include "platform/ui/ui_window.h"
#include "screens/swallow_touches_view.h"

/// Takes every outlet and notes every action.
class OutletKeeper : public UIViewController {
  public:
    KeyValueTable outlets;
    std::map<std::string, std::any> connected;
    std::vector<std::string> actions;

    const KeyValueProperty* propertyForKey(const std::string& key) override {
        if (key == "noSuchOutlet") return nullptr;
        outlets[key] =
            KeyValueAccess<std::any>{{}, [this, key](const std::any& value) { connected[key] = value; }};
        return &outlets[key];
    }
    bool performAction(const std::string& name, const std::shared_ptr<KeyValueCoding>&) override {
        actions.push_back(name);
        return name != "noSuchAction:";
    }
};

/// The main screen laid out for a size, in a window.
struct MainStoryboard {
    explicit MainStoryboard(CGSize size) {
        NSBundle::mainBundle().setReader(makeFileResourceReader(ZENTARO_RESOURCES_DIR));
        UIStoryboard storyboard("Main");
        storyboard.registerController("GameViewController", [] { return std::make_shared<OutletKeeper>(); });
        storyboard.registerView("GLKView", [] { return std::make_shared<UIView>(); });
        storyboard.registerView("SwallowTouchesView", [] { return std::make_shared<SwallowTouchesView>(); });
        controller =
            std::dynamic_pointer_cast<OutletKeeper>(storyboard.instantiateInitialViewController(size));
        NSBundle::mainBundle().setReader({});
        if (!controller) return;
        window = std::make_shared<UIWindow>(CGRect{CGPointZero, size});
        window->setRootViewController(controller);
        window->makeKeyAndVisible();
        window->layoutIfNeeded();
        bar = std::dynamic_pointer_cast<UIToolbar>(
            std::any_cast<std::shared_ptr<UIView>>(controller->connected["menuView"]));
    }

    std::shared_ptr<OutletKeeper> controller;
    std::shared_ptr<UIWindow> window;
    std::shared_ptr<UIToolbar> bar;
};
