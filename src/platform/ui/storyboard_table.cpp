// Sections and rows of tables, with their texts in the user's language.
// Rows that need what this build lacks are read like the others, and left out.
#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/ui/storyboard_builder.h"

namespace {

using Node = StoryboardNode;

}  // namespace

std::string localizedText(const StoryboardNode& key) {
    std::string text = NSBundle::mainBundle().localizedStringForKey(key.text(), "");
    if (text.empty()) key.fail("there is no text \"" + key.text() + "\"");
    return text;
}

std::string filledIn(std::string text, const std::map<std::string, std::string>& values) {
    for (const auto& [name, value] : values) {
        const std::string place = "{" + name + "}";
        for (auto at = text.find(place); at != std::string::npos; at = text.find(place, at + value.size()))
            text.replace(at, place.size(), value);
    }
    return text;
}

void SceneBuilder::applyTable(const Node& list, UIView& view) {
    auto* table = dynamic_cast<UITableView*>(&view);
    if (!table) list.fail("not a table");
    std::vector<UITableViewSection> sections;
    const std::size_t count = list.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        UITableViewSection section = this->section(list.at(i));
        if (!section.rows.empty()) sections.push_back(std::move(section));
    }
    table->setSections(std::move(sections));
}

UITableViewSection SceneBuilder::section(const Node& node) {
    node.expectObject({"headerKey", "rows"});
    UITableViewSection section;
    if (node.has("headerKey")) section.header = localized(node.at("headerKey"));
    const Node rows = node.at("rows");
    const std::size_t count = rows.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        auto row = cell(rows.at(i));
        if (isAvailable(rows.at(i))) section.rows.push_back(std::move(row));
    }
    return section;
}

bool SceneBuilder::isAvailable(const Node& node) const {
    return !node.has("requires") || _registry.features.count(node.at("requires").text()) > 0;
}

std::shared_ptr<UITableViewCell> SceneBuilder::cell(const Node& node) {
    node.expectObject({"class", "tag", "text", "textKey", "detail", "detailKey", "icon", "iconColor",
                       "accessory", "selectable", "segue", "requires"});
    const Node name = node.at("class");
    auto cell = std::dynamic_pointer_cast<UITableViewCell>(made(name));
    if (!cell) name.fail("not a cell");
    if (node.has("tag")) cell->setTag(node.at("tag").integer());
    cell->textLabel()->setText(textOf(node, "text", "textKey"));
    cell->detailTextLabel()->setText(textOf(node, "detail", "detailKey"));
    if (node.has("icon")) cell->imageView()->setImage(node.at("icon").icon());
    if (node.has("iconColor")) {
        CALayer layer = cell->imageView()->layer();
        layer.backgroundColor = node.at("iconColor").color();
        cell->imageView()->setLayer(layer);
    }
    if (node.has("accessory")) {
        if (node.at("accessory").text() != "disclosure") node.at("accessory").fail("not \"disclosure\"");
        cell->setAccessoryType(UITableViewCellAccessoryType::disclosureIndicator);
    }
    if (node.has("selectable") && !node.at("selectable").flag())
        cell->setSelectionStyle(UITableViewCellSelectionStyle::none);
    if (node.has("segue")) {
        cell->setSelectionAction([perform = segueNamed(node.at("segue").text()),
                                  sender = std::weak_ptr<UIView>(cell)] { perform(sender.lock()); });
    }
    cell->awakeFromNib();
    return cell;
}

std::string SceneBuilder::textOf(const Node& node, const char* text, const char* key) const {
    if (node.has(key)) return localized(node.at(key));
    return node.has(text) ? filledIn(node.at(text).text(), _registry.values) : "";
}

std::string SceneBuilder::localized(const Node& key) const {
    return filledIn(localizedText(key), _registry.values);
}
