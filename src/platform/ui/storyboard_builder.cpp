// Views, bars and what is bound to them.
// Rows of tables are made in storyboard_table.cpp.
#include "platform/ui/storyboard_builder.h"

#include <any>
#include <utility>

#include "platform/foundation/ns_log.h"

namespace {

using Node = StoryboardNode;

constexpr int deepestView = 32;

}  // namespace

template <typename Object>
void SceneBuilder::connect(const Node& name, const std::shared_ptr<Object>& object) {
    if (_controller->setValueForKey(std::any(object), name.text())) return;
    NSLog("%s: %s: the controller has no outlet \"%s\" of this kind", _file.c_str(), name.path.c_str(),
          name.text().c_str());
}

std::shared_ptr<UIView> SceneBuilder::view(const Node& node, int depth) {
    if (depth > deepestView) node.fail("views nested too deeply");
    node.expectObject({"class", "frame", "autoresizing", "alpha", "backgroundColor", "cornerRadius",
                       "accessibilityLabel", "outlet", "subviews", "items", "maximumWidth", "sections"});
    const Node name = node.at("class");
    std::shared_ptr<UIView> view = made(name);
    applyProperties(node, *view);
    applyToolbar(node, *view);
    if (node.has("sections")) applyTable(node.at("sections"), *view);
    if (node.has("subviews")) {
        const Node subviews = node.at("subviews");
        const std::size_t count = subviews.listSize();
        for (std::size_t i = 0; i < count; ++i)
            view->addSubview(this->view(subviews.at(i), depth + 1));
    }
    if (node.has("outlet")) connect(node.at("outlet"), view);
    return view;
}

std::shared_ptr<UIView> SceneBuilder::made(const Node& name) const {
    const auto maker = _registry.views.find(name.text());
    std::shared_ptr<UIView> view = maker == _registry.views.end() ? nullptr : maker->second();
    if (!view) name.fail("unknown class \"" + name.text() + "\"");
    return view;
}

void SceneBuilder::applyProperties(const Node& node, UIView& view) {
    view.setFrame(node.at("frame").rect());
    if (node.has("autoresizing")) view.setAutoresizingMask(node.at("autoresizing").autoresizing());
    if (node.has("alpha")) view.setAlpha(node.at("alpha").number());
    if (node.has("backgroundColor")) view.setBackgroundColor(node.at("backgroundColor").color());
    if (node.has("cornerRadius")) view.setCornerRadius(node.at("cornerRadius").number());
    if (node.has("accessibilityLabel")) {
        view.setAccessibilityLabel(node.at("accessibilityLabel").text());
    }
}

void SceneBuilder::applyToolbar(const Node& node, UIView& view) {
    auto* toolbar = dynamic_cast<UIToolbar*>(&view);
    const bool asksForOne = node.has("items") || node.has("maximumWidth");
    if (!toolbar && asksForOne) node.fail("not a toolbar");
    if (node.has("maximumWidth")) toolbar->setMaximumWidth(node.at("maximumWidth").number());
    if (!node.has("items")) return;
    UIToolbar::Items items;
    const Node list = node.at("items");
    const std::size_t count = list.listSize();
    for (std::size_t i = 0; i < count; ++i)
        items.push_back(item(list.at(i)));
    toolbar->setItems(std::move(items));
}

std::shared_ptr<UIBarButtonItem> SceneBuilder::item(const Node& node) {
    auto item = std::make_shared<UIBarButtonItem>();
    if (node.has("space")) {
        node.expectObject({"space"});
        if (node.at("space").text() != "flexible") node.at("space").fail("not \"flexible\"");
        item->setFlexibleSpace(true);
        return item;
    }
    node.expectObject({"title", "accessibilityLabel", "icon", "titleIcons", "outlet", "action", "segue"});
    if (node.has("title")) item->setTitle(node.at("title").text());
    if (node.has("accessibilityLabel")) {
        item->setAccessibilityLabel(node.at("accessibilityLabel").text());
    }
    if (node.has("icon")) item->setImage(node.at("icon").icon());
    if (node.has("titleIcons")) {
        const Node icons = node.at("titleIcons");
        if (!icons.value.is_object()) icons.fail("not an object");
        for (const auto& [title, ignored] : icons.value.items()) {
            item->setImageForTitle(title, icons.at(title.c_str()).icon());
        }
    }
    if (node.has("outlet")) connect(node.at("outlet"), item);
    if (node.has("action")) item->setAction(actionNamed(node.at("action").text()));
    if (node.has("segue")) {
        item->setAction(
            [perform = segueNamed(node.at("segue").text())](const auto& sender) { perform(sender); });
    }
    return item;
}

UIBarButtonItem::Action SceneBuilder::actionNamed(const std::string& name) const {
    return [weak = std::weak_ptr<UIViewController>(_controller), name, file = _file](const auto& sender) {
        const auto controller = weak.lock();
        if (controller && !controller->performAction(name, sender)) {
            NSLog("%s: the controller has no action \"%s\"", file.c_str(), name.c_str());
        }
    };
}

std::function<void(const UIViewController::Sender&)> SceneBuilder::segueNamed(
    const std::string& identifier) const {
    return [weak = std::weak_ptr<UIViewController>(_controller), identifier](const auto& sender) {
        if (const auto controller = weak.lock()) controller->performSegueWithIdentifier(identifier, sender);
    };
}
