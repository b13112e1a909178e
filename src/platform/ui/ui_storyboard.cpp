// Reading storyboards. Everything that is wrong in one is a mistake of the app's own data, so reading is
// strict: the first fault is reported with its place, and nothing is made.
#include "platform/ui/ui_storyboard.h"

#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/storyboard_builder.h"
#include "platform/ui/ui_navigation_controller.h"
#include "platform/ui/ui_table_view_controller.h"
#include "platform/ui/ui_toolbar.h"

namespace {

using nlohmann::json;
using Node = StoryboardNode;
using Segue = UIViewController::Segue;

/// The screen that shows what a screen in a container asks for.
std::shared_ptr<UIViewController> outermost(UIViewController& controller) {
    auto screen = controller.shared_from_this();
    while (const auto container = screen->parentViewController())
        screen = container;
    return screen;
}

Segue unwindSegue(const std::string& identifier, const std::string& action) {
    return [identifier, action](UIViewController& source, const auto&) {
        source.unwind(action, UIStoryboardSegue{identifier});
    };
}

void go(UIViewController& source, const std::shared_ptr<UIViewController>& destination, bool pushes) {
    if (!destination) return;
    if (!pushes) return outermost(source)->presentViewController(destination, true);
    if (const auto stack = UINavigationController::of(source))
        stack->pushViewController(destination, true);
    else
        NSLog("UIStoryboard: nothing to push a screen on");
}

template <typename View>
std::shared_ptr<UIView> make() {
    return std::make_shared<View>();
}

}  // namespace

UIStoryboard::UIStoryboard(std::string name) : _name(std::move(name)) {
    _registry.views = {{"UIView", make<UIView>},
                       {"UIToolbar", make<UIToolbar>},
                       {"UITableView", make<UITableView>},
                       {"UITableViewCell", make<UITableViewCell>}};
    _registry.controllers = {
        {"UINavigationController", [] { return std::make_shared<UINavigationController>(); }},
        {"UITableViewController", [] { return std::make_shared<UITableViewController>(); }}};
}

void UIStoryboard::registerController(const std::string& className, ControllerMaker maker) {
    _registry.controllers[className] = std::move(maker);
}

void UIStoryboard::registerView(const std::string& className, ViewMaker maker) {
    _registry.views[className] = std::move(maker);
}

UIStoryboard UIStoryboard::storyboardWithName(std::string name) const {
    UIStoryboard other = *this;
    other._name = std::move(name);
    return other;
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateInitialViewController(CGSize size) const {
    return instantiate("", size);
}

/// Of the initial controller, if the scene has no name.
std::shared_ptr<UIViewController> UIStoryboard::instantiate(const std::string& scene, CGSize size) const {
    const std::string file = _name + ".storyboard.json";
    const auto text = NSBundle::mainBundle().stringForResource(_name + ".storyboard", "json");
    if (!text) {
        NSLog("%s: no such resource", file.c_str());
        return {};
    }
    try {
        const json document = json::parse(*text);
        const Node root{document, ""};
        root.expectObject({"initialController", "scenes"});
        return controllerOf(
            root, scene.empty() ? root.at("initialController") : root.at("scenes").at(scene.c_str()), size);
    } catch (const std::exception& fault) {
        NSLog("%s: %s", file.c_str(), fault.what());
        return {};
    }
}

std::shared_ptr<UIViewController> UIStoryboard::controllerOf(const StoryboardNode& root,
                                                             const StoryboardNode& scene, CGSize size) const {
    scene.expectObject({"class", "view", "titleKey", "root", "segues"});
    const Node name = scene.at("class");
    const auto maker = _registry.controllers.find(name.text());
    auto controller = maker == _registry.controllers.end() ? nullptr : maker->second();
    if (!controller) name.fail("unknown class \"" + name.text() + "\"");
    if (scene.has("titleKey"))
        controller->setTitle(filledIn(localizedText(scene.at("titleKey")), _registry.values));
    if (scene.has("segues")) laySegues(root, scene.at("segues"), *controller);
    if (scene.has("root")) {
        const auto stack = std::dynamic_pointer_cast<UINavigationController>(controller);
        const Node first = scene.at("root");
        if (!stack) first.fail("not a navigation controller");
        const Node below = root.at("scenes").at(first.text().c_str());
        if (below.has("root")) below.fail("a navigation controller within another");
        stack->setRootViewController(controllerOf(root, below, size));
        return controller;
    }
    const auto view = SceneBuilder(_registry, _name + ".storyboard.json", controller).view(scene.at("view"));
    view->setFrame({CGPointZero, size});
    controller->setView(view);
    return controller;
}

/// Destinations are made when somebody goes there.
void UIStoryboard::laySegues(const StoryboardNode& root, const StoryboardNode& list,
                             UIViewController& controller) const {
    const std::size_t count = list.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        const Node node = list.at(i);
        node.expectObject({"identifier", "kind", "scene", "storyboard", "action"});
        const std::string identifier = node.at("identifier").text();
        const std::string kind = node.at("kind").text();
        if (kind == "unwind") {
            controller.setSegue(identifier, unwindSegue(identifier, node.at("action").text()));
            continue;
        }
        if (kind != "present" && kind != "push")
            node.at("kind").fail("not \"present\", \"push\" or \"unwind\"");
        const UIStoryboard there =
            node.has("storyboard")
                ? storyboardWithName(filledIn(node.at("storyboard").text(), _registry.values))
                : *this;
        const std::string scene = node.has("storyboard") ? "" : node.at("scene").text();
        if (!scene.empty()) root.at("scenes").at(scene.c_str());
        controller.setSegue(identifier, [there, scene, kind](UIViewController& source, const auto&) {
            const CGSize size = outermost(source)->view()->bounds().size;
            go(source, there.instantiate(scene, size), kind == "push");
        });
    }
}
