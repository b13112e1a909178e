// The arithmetic of moved properties, component by component.
// Each component is one fused multiply-add, so that a step has a single rounding.
#include "tween/gs_tween_data.h"

#include <cmath>

namespace {

double difference(double a, double b) {
    return a - b;
}

/// Wraps around where the difference has no place.
int64_t difference(int64_t a, int64_t b) {
    return static_cast<int64_t>(static_cast<uint64_t>(a) - static_cast<uint64_t>(b));
}

CGPoint difference(CGPoint a, CGPoint b) {
    return {a.x - b.x, a.y - b.y};
}

CGSize difference(CGSize a, CGSize b) {
    return {a.width - b.width, a.height - b.height};
}

CGRect difference(const CGRect& a, const CGRect& b) {
    return {difference(a.origin, b.origin), difference(a.size, b.size)};
}

double moved(double from, double change, double eased) {
    return std::fma(change, eased, from);
}

int64_t moved(int64_t from, int64_t change, double eased) {
    return truncatedToInteger(moved(static_cast<double>(from), static_cast<double>(change), eased));
}

CGPoint moved(CGPoint from, CGPoint change, double eased) {
    return {moved(from.x, change.x, eased), moved(from.y, change.y, eased)};
}

CGSize moved(CGSize from, CGSize change, double eased) {
    return {moved(from.width, change.width, eased), moved(from.height, change.height, eased)};
}

CGRect moved(const CGRect& from, const CGRect& change, double eased) {
    return {moved(from.origin, change.origin, eased), moved(from.size, change.size, eased)};
}

std::string textOf(const GSTweenValue& value) {
    return stringValue(value).value_or("");
}

}  // namespace

template <typename Value>
void GSTweenDataOf<Value>::setup() {
    _from = _getter();
    _change = difference(_to, _from);
}

template <typename Value>
void GSTweenDataOf<Value>::updateWithValue(double eased) {
    _setter(moved(_from, _change, eased));
}

template class GSTweenDataOf<double>;
template class GSTweenDataOf<int64_t>;
template class GSTweenDataOf<CGPoint>;
template class GSTweenDataOf<CGSize>;
template class GSTweenDataOf<CGRect>;

GSTweenDataFloat::GSTweenDataFloat(const GSTweenValue& value, Getter getter, Setter setter)
    : GSTweenDataOf(static_cast<double>(floatValue(value).value_or(0)), std::move(getter),
                    std::move(setter)) {}

GSTweenDataRect::GSTweenDataRect(const GSTweenValue& value, Getter getter, Setter setter)
    : GSTweenDataOf(CGRectFromString(textOf(value)), std::move(getter), std::move(setter)) {}

GSTweenDataInteger::GSTweenDataInteger(const GSTweenValue& value, Getter getter, Setter setter)
    : GSTweenDataOf(integerValue(value).value_or(0), std::move(getter), std::move(setter)) {}

GSTweenDataPoint::GSTweenDataPoint(const GSTweenValue& value, Getter getter, Setter setter)
    : GSTweenDataOf(CGPointFromString(textOf(value)), std::move(getter), std::move(setter)) {}

GSTweenDataSize::GSTweenDataSize(const GSTweenValue& value, Getter getter, Setter setter)
    : GSTweenDataOf(CGSizeFromString(textOf(value)), std::move(getter), std::move(setter)) {}
