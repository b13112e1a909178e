// Rectangles and their string forms.
// Every bit of a number comes back, those of a NaN too.
#include "platform/foundation/geometry.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <cstring>
#include <optional>

#include "platform/foundation/decimal_text.h"

namespace {

constexpr uint64_t signBit = uint64_t{1} << 63;
constexpr uint64_t exponentBits = uint64_t{0x7ff} << 52;
constexpr uint64_t plainNaNPayload = uint64_t{1} << 51;

uint64_t bitsOf(CGFloat value) {
    uint64_t bits = 0;
    std::memcpy(&bits, &value, sizeof bits);
    return bits;
}

CGFloat fromBits(uint64_t bits) {
    CGFloat value = 0;
    std::memcpy(&value, &bits, sizeof value);
    return value;
}

/// NaNs carry their payload in hexadecimal, "nan(8000000000001)", unless it is the usual one.
void appendNaN(std::string& text, CGFloat value) {
    const uint64_t bits = bitsOf(value);
    text += (bits & signBit) != 0 ? "-nan" : "nan";
    const uint64_t payload = bits & ~(signBit | exponentBits);
    if (payload == plainNaNPayload) return;
    char digits[16];
    const auto end = std::to_chars(digits, digits + sizeof digits, payload, 16).ptr;
    text += '(';
    text.append(digits, end);
    text += ')';
}

void appendNumber(std::string& text, CGFloat value) {
    if (std::isnan(value)) return appendNaN(text, value);
    text += decimalText(value);
}

void appendPair(std::string& text, CGFloat first, CGFloat second) {
    text += '{';
    appendNumber(text, first);
    text += ", ";
    appendNumber(text, second);
    text += '}';
}

struct Pair {
    CGFloat first;
    CGFloat second;
};

/// Reads tokens off the front of a text, white space before each.
class TokenScanner {
  public:
    explicit TokenScanner(std::string_view text) : _rest(text) {}

    bool character(char wanted) {
        skipSpace();
        if (!_rest.starts_with(wanted)) return false;
        _rest.remove_prefix(1);
        return true;
    }

    bool atEnd() {
        skipSpace();
        return _rest.empty();
    }

    std::optional<CGFloat> number() {
        skipSpace();
        if (_rest.starts_with("nan") || _rest.starts_with("-nan")) return notANumber();
        if (_rest.starts_with('+') && !_rest.starts_with("+-")) _rest.remove_prefix(1);
        return takeDecimal(_rest);
    }

    std::optional<Pair> pair() {
        if (!character('{')) return std::nullopt;
        const auto first = number();
        if (!first || !character(',')) return std::nullopt;
        const auto second = number();
        if (!second || !character('}')) return std::nullopt;
        return Pair{*first, *second};
    }

  private:
    void skipSpace() {
        const auto start = _rest.find_first_not_of(" \t\n\r\v\f");
        _rest.remove_prefix(std::min(start, _rest.size()));
    }

    std::optional<CGFloat> notANumber() {
        const uint64_t sign = _rest.starts_with('-') ? signBit : 0;
        _rest.remove_prefix(sign != 0 ? 4 : 3);
        uint64_t payload = plainNaNPayload;
        if (_rest.starts_with('(')) {
            const auto [end, error] =
                std::from_chars(_rest.data() + 1, _rest.data() + _rest.size(), payload, 16);
            if (error != std::errc() || payload == 0 || payload > ~(signBit | exponentBits))
                return std::nullopt;
            _rest.remove_prefix(static_cast<std::size_t>(end - _rest.data()));
            if (!_rest.starts_with(')')) return std::nullopt;
            _rest.remove_prefix(1);
        }
        return fromBits(sign | exponentBits | payload);
    }

    std::string_view _rest;
};

/// The whole text as one pair, zeros if it is anything else.
Pair pairFromString(std::string_view text) {
    TokenScanner scanner(text);
    const auto pair = scanner.pair();
    return pair && scanner.atEnd() ? *pair : Pair{0, 0};
}

}  // namespace

bool isFinite(CGRect r) {
    return std::isfinite(CGRectGetMinX(r)) && std::isfinite(CGRectGetMinY(r)) &&
           std::isfinite(CGRectGetMaxX(r)) && std::isfinite(CGRectGetMaxY(r));
}

bool CGRectIsNull(CGRect r) {
    return r.origin.x == CGRectNull.origin.x || r.origin.y == CGRectNull.origin.y;
}

bool CGRectIsEmpty(CGRect r) {
    return CGRectIsNull(r) || !(r.size.width > 0 && r.size.height > 0);
}

bool CGRectContainsPoint(CGRect r, CGPoint p) {
    return p.x >= CGRectGetMinX(r) && p.x < CGRectGetMaxX(r) && p.y >= CGRectGetMinY(r) &&
           p.y < CGRectGetMaxY(r);
}

CGRect CGRectIntersection(CGRect a, CGRect b) {
    const CGFloat left = std::max(CGRectGetMinX(a), CGRectGetMinX(b));
    const CGFloat top = std::max(CGRectGetMinY(a), CGRectGetMinY(b));
    const CGFloat right = std::min(CGRectGetMaxX(a), CGRectGetMaxX(b));
    const CGFloat bottom = std::min(CGRectGetMaxY(a), CGRectGetMaxY(b));
    if (!(left < right && top < bottom)) return CGRectNull;
    return CGRectMake(left, top, right - left, bottom - top);
}

CGRect CGRectUnion(CGRect a, CGRect b) {
    if (CGRectIsNull(a)) return b;
    if (CGRectIsNull(b)) return a;
    const CGFloat left = std::min(CGRectGetMinX(a), CGRectGetMinX(b));
    const CGFloat top = std::min(CGRectGetMinY(a), CGRectGetMinY(b));
    const CGFloat right = std::max(CGRectGetMaxX(a), CGRectGetMaxX(b));
    const CGFloat bottom = std::max(CGRectGetMaxY(a), CGRectGetMaxY(b));
    return CGRectMake(left, top, right - left, bottom - top);
}

CGRect CGRectIntegral(CGRect r) {
    if (CGRectIsNull(r)) return r;
    const CGFloat left = std::floor(CGRectGetMinX(r));
    const CGFloat top = std::floor(CGRectGetMinY(r));
    return CGRectMake(left, top, std::ceil(CGRectGetMaxX(r)) - left, std::ceil(CGRectGetMaxY(r)) - top);
}

CGRect UIEdgeInsetsInsetRect(CGRect r, UIEdgeInsets insets) {
    return CGRectMake(r.origin.x + insets.left, r.origin.y + insets.top,
                      r.size.width - insets.left - insets.right, r.size.height - insets.top - insets.bottom);
}

std::string NSStringFromCGPoint(CGPoint p) {
    std::string text;
    appendPair(text, p.x, p.y);
    return text;
}

std::string NSStringFromCGSize(CGSize s) {
    std::string text;
    appendPair(text, s.width, s.height);
    return text;
}

std::string NSStringFromCGRect(CGRect r) {
    std::string text = "{";
    appendPair(text, r.origin.x, r.origin.y);
    text += ", ";
    appendPair(text, r.size.width, r.size.height);
    text += '}';
    return text;
}

CGPoint CGPointFromString(std::string_view text) {
    const Pair pair = pairFromString(text);
    return {pair.first, pair.second};
}

CGSize CGSizeFromString(std::string_view text) {
    const Pair pair = pairFromString(text);
    return {pair.first, pair.second};
}

CGRect CGRectFromString(std::string_view text) {
    TokenScanner scanner(text);
    if (!scanner.character('{')) return CGRectZero;
    const auto origin = scanner.pair();
    if (!origin || !scanner.character(',')) return CGRectZero;
    const auto size = scanner.pair();
    if (!size || !scanner.character('}') || !scanner.atEnd()) return CGRectZero;
    return CGRectMake(origin->first, origin->second, size->first, size->second);
}
