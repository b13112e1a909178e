// Makes the view tree of one screen of a storyboard.
// The controller gets its outlets; actions and ways are bound to it by name.
#pragma once

#include <memory>
#include <string>

#include "platform/ui/storyboard_node.h"
#include "platform/ui/ui_storyboard.h"
#include "platform/ui/ui_table_view.h"
#include "platform/ui/ui_toolbar.h"

/// The text under the key that stands there; a missing one is a fault.
std::string localizedText(const StoryboardNode& key);
/// With the values in the place of their names in braces.
std::string filledIn(std::string text, const std::map<std::string, std::string>& values);

class SceneBuilder {
  public:
    SceneBuilder(const UIStoryboard::Registry& registry, std::string file,
                 std::shared_ptr<UIViewController> controller)
        : _registry(registry), _file(std::move(file)), _controller(std::move(controller)) {}

    std::shared_ptr<UIView> view(const StoryboardNode& node, int depth = 0);

  private:
    std::shared_ptr<UIView> made(const StoryboardNode& name) const;
    static void applyProperties(const StoryboardNode& node, UIView& view);
    void applyToolbar(const StoryboardNode& node, UIView& view);
    std::shared_ptr<UIBarButtonItem> item(const StoryboardNode& node);
    void applyTable(const StoryboardNode& list, UIView& view);
    UITableViewSection section(const StoryboardNode& node);
    std::shared_ptr<UITableViewCell> cell(const StoryboardNode& node);
    void dress(const StoryboardNode& node, UITableViewCell& cell) const;
    bool isAvailable(const StoryboardNode& node) const;
    std::string textOf(const StoryboardNode& node, const char* text, const char* key) const;
    std::string localized(const StoryboardNode& key) const;
    std::function<void(const UIViewController::Sender&)> segueNamed(const std::string& identifier) const;
    UIBarButtonItem::Action actionNamed(const std::string& name) const;
    template <typename Object>
    void connect(const StoryboardNode& name, const std::shared_ptr<Object>& object);

    const UIStoryboard::Registry& _registry;
    std::string _file;
    std::shared_ptr<UIViewController> _controller;
};
