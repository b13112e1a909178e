// Reading storyboards. Everything that is wrong in one is a mistake of the app's own data, so reading is
// strict: the first fault is reported with its place, and nothing is made.
#include "platform/ui/ui_storyboard.h"

#include <algorithm>
#include <any>
#include <cstdlib>
#include <initializer_list>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <utility>

#include "platform/foundation/ns_bundle.h"
#include "platform/foundation/ns_log.h"
#include "platform/ui/ui_control.h"
#include "platform/ui/ui_toolbar.h"

namespace {

using nlohmann::json;

constexpr CGFloat iconGrid = 24;
constexpr int deepestView = 32;

/// A value with its place in the file, for messages.
struct Node {
    const json& value;
    std::string path;

    [[noreturn]] void fail(const std::string& what) const {
        throw std::runtime_error((path.empty() ? "/" : path) + ": " + what);
    }
    bool has(const char* key) const { return value.contains(key); }
    Node at(const char* key) const {
        if (!has(key)) fail(std::string("\"") + key + "\" is missing");
        return {value.at(key), path + "/" + key};
    }
    Node at(std::size_t index) const { return {value.at(index), path + "/" + std::to_string(index)}; }
    void expectObject(std::initializer_list<const char*> keys) const {
        if (!value.is_object()) fail("not an object");
        for (const auto& [key, ignored] : value.items()) {
            if (std::find(keys.begin(), keys.end(), key) == keys.end()) fail("unknown key \"" + key + "\"");
        }
    }
    std::size_t listSize() const {
        if (!value.is_array()) fail("not a list");
        return value.size();
    }
    std::string text() const {
        if (!value.is_string()) fail("not a text");
        return value.get<std::string>();
    }
    double number() const {
        if (!value.is_number()) fail("not a number");
        return value.get<double>();
    }
    bool flag() const {
        if (!value.is_boolean()) fail("not true or false");
        return value.get<bool>();
    }
};

CGRect rect(const Node& node) {
    if (node.listSize() != 4) node.fail("not four numbers");
    return CGRectMake(node.at(std::size_t{0}).number(), node.at(1).number(), node.at(2).number(),
                      node.at(3).number());
}

UIColor color(const Node& node) {
    const std::string text = node.text();
    const bool formed = (text.size() == 7 || text.size() == 9) && text[0] == '#' &&
                        text.find_first_not_of("0123456789abcdefABCDEF", 1) == std::string::npos;
    if (!formed) node.fail("not a colour");
    const auto component = [&](std::size_t at) {
        return static_cast<double>(std::strtol(text.substr(at, 2).c_str(), nullptr, 16)) / 255.0;
    };
    return {component(1), component(3), component(5), text.size() == 9 ? component(7) : 1.0};
}

uint32_t autoresizing(const Node& node) {
    static const std::map<std::string, uint32_t> bits = {
        {"left", UIViewAutoresizingFlexibleLeftMargin},   {"width", UIViewAutoresizingFlexibleWidth},
        {"right", UIViewAutoresizingFlexibleRightMargin}, {"top", UIViewAutoresizingFlexibleTopMargin},
        {"height", UIViewAutoresizingFlexibleHeight},     {"bottom", UIViewAutoresizingFlexibleBottomMargin},
    };
    uint32_t mask = UIViewAutoresizingNone;
    const std::size_t count = node.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        const auto bit = bits.find(node.at(i).text());
        if (bit == bits.end()) node.at(i).fail("unknown part of a frame");
        mask |= bit->second;
    }
    return mask;
}

void addShapes(const Node& list, const VectorGlyph::Shape& pattern, VectorGlyph& glyph) {
    const std::size_t count = list.listSize();
    for (std::size_t i = 0; i < count; ++i) {
        auto path = UIBezierPath::pathWithSVGData(list.at(i).text());
        if (!path) list.at(i).fail("not SVG path data");
        VectorGlyph::Shape shape = pattern;
        shape.path = std::move(*path);
        glyph.shapes.push_back(std::move(shape));
    }
}

UIImageRef icon(const Node& node) {
    node.expectObject({"strokes", "fills", "lineWidth"});
    VectorGlyph glyph;
    glyph.size = {iconGrid, iconGrid};
    const double lineWidth = node.has("lineWidth") ? node.at("lineWidth").number() : 1.75;
    if (node.has("fills")) addShapes(node.at("fills"), {{}, false, 0, FillRule::evenOdd}, glyph);
    if (node.has("strokes")) {
        addShapes(node.at("strokes"), {{}, true, lineWidth, FillRule::nonZero}, glyph);
    }
    return UIImage::imageWithGlyph(std::move(glyph), {iconGrid, iconGrid});
}

/// Builds the tree of one controller.
class SceneBuilder {
  public:
    SceneBuilder(const std::map<std::string, UIStoryboard::ViewMaker>& views, std::string file,
                 std::shared_ptr<UIViewController> controller)
        : _views(views), _file(std::move(file)), _controller(std::move(controller)) {}

    std::shared_ptr<UIView> view(const Node& node, int depth = 0) {
        if (depth > deepestView) node.fail("views nested too deeply");
        node.expectObject({"class", "frame", "autoresizing", "alpha", "hidden", "backgroundColor",
                           "cornerRadius", "accessibilityLabel", "outlet", "subviews", "items", "tintColor",
                           "maximumWidth"});
        const Node name = node.at("class");
        const auto maker = _views.find(name.text());
        std::shared_ptr<UIView> view = maker == _views.end() ? nullptr : maker->second();
        if (!view) name.fail("unknown class \"" + name.text() + "\"");
        applyProperties(node, *view);
        applyToolbar(node, *view);
        if (node.has("subviews")) {
            const Node subviews = node.at("subviews");
            const std::size_t count = subviews.listSize();
            for (std::size_t i = 0; i < count; ++i)
                view->addSubview(this->view(subviews.at(i), depth + 1));
        }
        if (node.has("outlet")) connect(node.at("outlet"), view);
        return view;
    }

  private:
    static void applyProperties(const Node& node, UIView& view) {
        view.setFrame(rect(node.at("frame")));
        if (node.has("autoresizing")) view.setAutoresizingMask(autoresizing(node.at("autoresizing")));
        if (node.has("alpha")) view.setAlpha(node.at("alpha").number());
        if (node.has("hidden")) view.setHidden(node.at("hidden").flag());
        if (node.has("backgroundColor")) view.setBackgroundColor(color(node.at("backgroundColor")));
        if (node.has("cornerRadius")) view.setCornerRadius(node.at("cornerRadius").number());
        if (node.has("accessibilityLabel")) {
            view.setAccessibilityLabel(node.at("accessibilityLabel").text());
        }
    }

    void applyToolbar(const Node& node, UIView& view) {
        auto* toolbar = dynamic_cast<UIToolbar*>(&view);
        const bool asksForOne = node.has("items") || node.has("tintColor") || node.has("maximumWidth");
        if (!toolbar && asksForOne) node.fail("not a toolbar");
        if (node.has("tintColor")) toolbar->setTintColor(color(node.at("tintColor")));
        if (node.has("maximumWidth")) toolbar->setMaximumWidth(node.at("maximumWidth").number());
        if (!node.has("items")) return;
        UIToolbar::Items items;
        const Node list = node.at("items");
        const std::size_t count = list.listSize();
        for (std::size_t i = 0; i < count; ++i)
            items.push_back(item(list.at(i)));
        toolbar->setItems(std::move(items));
    }

    std::shared_ptr<UIBarButtonItem> item(const Node& node) {
        auto item = std::make_shared<UIBarButtonItem>();
        if (node.has("space")) {
            node.expectObject({"space"});
            if (node.at("space").text() != "flexible") node.at("space").fail("not \"flexible\"");
            item->setFlexibleSpace(true);
            return item;
        }
        node.expectObject({"title", "accessibilityLabel", "icon", "titleIcons", "outlet", "action"});
        if (node.has("title")) item->setTitle(node.at("title").text());
        if (node.has("accessibilityLabel")) {
            item->setAccessibilityLabel(node.at("accessibilityLabel").text());
        }
        if (node.has("icon")) item->setImage(icon(node.at("icon")));
        if (node.has("titleIcons")) {
            const Node icons = node.at("titleIcons");
            if (!icons.value.is_object()) icons.fail("not an object");
            for (const auto& [title, ignored] : icons.value.items()) {
                item->setImageForTitle(title, icon(icons.at(title.c_str())));
            }
        }
        if (node.has("outlet")) connect(node.at("outlet"), item);
        if (node.has("action")) item->setAction(actionNamed(node.at("action").text()));
        return item;
    }

    UIBarButtonItem::Action actionNamed(const std::string& name) const {
        return [weak = std::weak_ptr<UIViewController>(_controller), name, file = _file](const auto& sender) {
            const auto controller = weak.lock();
            if (controller && !controller->performAction(name, sender)) {
                NSLog("%s: the controller has no action \"%s\"", file.c_str(), name.c_str());
            }
        };
    }

    template <typename Object>
    void connect(const Node& name, const std::shared_ptr<Object>& object) {
        if (_controller->setValueForKey(std::any(object), name.text())) return;
        NSLog("%s: %s: the controller has no outlet \"%s\" of this kind", _file.c_str(), name.path.c_str(),
              name.text().c_str());
    }

    const std::map<std::string, UIStoryboard::ViewMaker>& _views;
    std::string _file;
    std::shared_ptr<UIViewController> _controller;
};

template <typename View>
std::shared_ptr<UIView> make() {
    return std::make_shared<View>();
}

}  // namespace

UIStoryboard::UIStoryboard(std::string name) : _name(std::move(name)) {
    _views = {{"UIView", make<UIView>},
              {"UILabel", make<UILabel>},
              {"UIButton", make<UIButton>},
              {"UIImageView", make<UIImageView>},
              {"UIToolbar", make<UIToolbar>}};
}

void UIStoryboard::registerController(const std::string& className, ControllerMaker maker) {
    _controllers[className] = std::move(maker);
}

void UIStoryboard::registerView(const std::string& className, ViewMaker maker) {
    _views[className] = std::move(maker);
}

std::shared_ptr<UIViewController> UIStoryboard::instantiateInitialViewController(CGSize size) {
    const std::string file = _name + ".storyboard.json";
    const auto text = NSBundle::mainBundle().stringForResource(_name + ".storyboard", "json");
    if (!text) {
        NSLog("%s: no such resource", file.c_str());
        return {};
    }
    try {
        const json document = json::parse(*text);
        const Node root{document, ""};
        root.expectObject({"initialController"});
        const Node scene = root.at("initialController");
        scene.expectObject({"class", "view"});
        const Node name = scene.at("class");
        const auto maker = _controllers.find(name.text());
        auto controller = maker == _controllers.end() ? nullptr : maker->second();
        if (!controller) name.fail("unknown class \"" + name.text() + "\"");
        const auto view = SceneBuilder(_views, file, controller).view(scene.at("view"));
        view->setFrame({CGPointZero, size});
        controller->setView(view);
        return controller;
    } catch (const std::exception& fault) {
        NSLog("%s: %s", file.c_str(), fault.what());
        return {};
    }
}
