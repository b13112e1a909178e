// Finds the property behind a key, rewrites the keys of a frame, and picks the class of data by type.
// Properties narrower than the layout in which data calculates are adapted here.
#include <algorithm>
#include <any>
#include <array>
#include <cstdio>
#include <cstring>
#include <optional>
#include <type_traits>

#include "platform/foundation/ns_log.h"
#include "tween/gs_tween_data.h"

namespace {

using DataPointer = std::unique_ptr<GSTweenData>;
using Target = std::shared_ptr<KeyValueCoding>;

struct Request {
    std::string key;
    GSTweenValue value;
};

/// Whole numbers convert. Single-precision layouts are laid over the wider one byte by byte, as they are:
/// only the wider ones move meaningfully.
template <typename To, typename From>
To adapted(const From& from) {
    if constexpr (std::is_integral_v<To>) {
        return static_cast<To>(from);
    } else {
        static_assert(std::is_trivially_copyable_v<From> && std::is_trivially_copyable_v<To>);
        To laid{};
        std::memcpy(static_cast<void*>(&laid), &from, std::min(sizeof from, sizeof laid));
        return laid;
    }
}

struct DataMaker {
    const GSTweenValue& value;

    DataPointer operator()(const KeyValueAccess<double>& access) const {
        return make<GSTweenDataFloat>(access);
    }
    DataPointer operator()(const KeyValueAccess<float>& access) const {
        return make<GSTweenDataFloat>(access);
    }
    DataPointer operator()(const KeyValueAccess<CGRect>& access) const {
        return make<GSTweenDataRect>(access);
    }
    DataPointer operator()(const KeyValueAccess<CGRectOfFloats>& access) const {
        return make<GSTweenDataRect>(access);
    }
    DataPointer operator()(const KeyValueAccess<CGPoint>& access) const {
        return make<GSTweenDataPoint>(access);
    }
    DataPointer operator()(const KeyValueAccess<CGSize>& access) const {
        return make<GSTweenDataSize>(access);
    }
    DataPointer operator()(const KeyValueAccess<int32_t>& access) const {
        return make<GSTweenDataInteger>(access);
    }
    DataPointer operator()(const KeyValueAccess<int64_t>& access) const {
        return make<GSTweenDataInteger>(access);
    }
    DataPointer operator()(const auto& /*unsupported*/) const { return nullptr; }

    template <typename Data, typename Property>
    DataPointer make(const KeyValueAccess<Property>& access) const {
        using Value = typename Data::Value;
        if constexpr (std::is_same_v<Value, Property>) {
            return std::make_unique<Data>(value, access.get, access.set);
        } else {
            return std::make_unique<Data>(
                value, [get = access.get] { return adapted<Value>(get()); },
                [set = access.set](const Value& wide) { set(adapted<Property>(wide)); });
        }
    }
};

struct IsReadableAndWritable {
    bool operator()(const auto& access) const { return access.get && access.set; }
};

/// The property if it can be both read and written.
const KeyValueProperty* movableProperty(KeyValueCoding& target, const std::string& key) {
    const KeyValueProperty* property = target.propertyForKey(key);
    return property && std::visit(IsReadableAndWritable{}, *property) ? property : nullptr;
}

template <typename... Values>
std::string formatted(const char* format, Values... values) {
    const int length = std::snprintf(nullptr, 0, format, values...);
    std::string text(static_cast<std::size_t>(length), '\0');
    std::snprintf(text.data(), text.size() + 1, format, values...);
    return text;
}

struct FrameKey {
    const char* name = nullptr;
    std::string (*end)(const CGRect& frame, const GSTweenValue& value) = nullptr;
};

std::string rectText(double x, double y, double width, double height) {
    return formatted("{{%f,%f},{%f,%f}}", x, y, width, height);
}

double number(const GSTweenValue& value) {
    return static_cast<double>(floatValue(value).value_or(0));
}

/// Six decimals of the parts that stay are kept: frames are in points.
constexpr std::array<FrameKey, 6> frameKeys = {{
    {"x", [](const CGRect& f,
             const GSTweenValue& v) { return rectText(number(v), f.origin.y, f.size.width, f.size.height); }},
    {"y", [](const CGRect& f,
             const GSTweenValue& v) { return rectText(f.origin.x, number(v), f.size.width, f.size.height); }},
    {"width",
     [](const CGRect& f, const GSTweenValue& v) {
         return rectText(f.origin.x, f.origin.y, number(v), f.size.height);
     }},
    {"height",
     [](const CGRect& f, const GSTweenValue& v) {
         return rectText(f.origin.x, f.origin.y, f.size.width, number(v));
     }},
    {"frameOrigin",
     [](const CGRect& f, const GSTweenValue& v) {
         return formatted("{%s,{%f,%f}}", stringValue(v).value_or("").c_str(), f.size.width, f.size.height);
     }},
    {"frameSize",
     [](const CGRect& f, const GSTweenValue& v) {
         return formatted("{{%f,%f},%s}", f.origin.x, f.origin.y, stringValue(v).value_or("").c_str());
     }},
}};

/// The request for the whole frame that does what one for a part of it asks.
std::optional<Request> frameRequest(KeyValueCoding& target, const Request& part) {
    for (const FrameKey& each : frameKeys) {
        if (part.key != each.name) continue;
        const std::any frame = target.valueForKey("frame");
        const auto* rect = std::any_cast<CGRect>(&frame);
        if (!rect) return std::nullopt;
        return Request{"frame", each.end(*rect, part.value)};
    }
    return std::nullopt;
}

}  // namespace

DataPointer GSTweenData::tweenDataWithValue(const GSTweenValue& value, const std::string& key,
                                            const Target& target) {
    Request request{key, value};
    const KeyValueProperty* property = target ? movableProperty(*target, key) : nullptr;
    if (target && !property) {
        if (auto whole = frameRequest(*target, request)) {
            request = *std::move(whole);
            property = movableProperty(*target, request.key);
        }
    }
    if (!property) {
        NSLog("GSTween Warning: Property was not found on target!");
        return nullptr;
    }
    DataPointer data = std::visit(DataMaker{request.value}, *property);
    if (data) {
        data->_key = request.key;
        data->_target = target;
    }
    return data;
}
