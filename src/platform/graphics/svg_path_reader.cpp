// A reader of path text: one function per command, every argument relative or absolute.
// Strict: an icon with a typing mistake should fail at once, not lose its second half.
#include "platform/graphics/svg_path_reader.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "platform/foundation/decimal_text.h"
#include "platform/graphics/svg_arc.h"

namespace {

CGPoint mirrored(CGPoint p, CGPoint at) {
    return {2 * at.x - p.x, 2 * at.y - p.y};
}

CGPoint between(CGPoint a, CGPoint b, CGFloat share) {
    return {a.x + (b.x - a.x) * share, a.y + (b.y - a.y) * share};
}

/// Command letters, numbers and flags off the front of a text.
class PathTokens {
  public:
    explicit PathTokens(std::string_view text) : _rest(text) {}

    bool atEnd() {
        skipSpace();
        return _rest.empty();
    }

    /// Whatever character comes; only before the end.
    char command() {
        const char letter = _rest.front();
        _rest.remove_prefix(1);
        _firstArgument = true;
        return letter;
    }

    /// True behind a comma too, where a number is owed.
    bool argumentFollows() {
        skipSpace();
        return !_rest.empty() && (_rest.front() == ',' || startsNumber(_rest));
    }

    bool number(CGFloat& value) {
        skipSeparator();
        if (!startsNumber(_rest)) return false;
        if (_rest.front() == '+') _rest.remove_prefix(1);
        const auto taken = takeDecimal(_rest);
        value = taken.value_or(value);
        return taken.has_value();
    }

    /// One digit; what follows it may stick to it.
    bool flag(bool& value) {
        skipSeparator();
        if (_rest.empty() || (_rest.front() != '0' && _rest.front() != '1')) return false;
        value = _rest.front() == '1';
        _rest.remove_prefix(1);
        return true;
    }

  private:
    /// A sign at most, then a digit or a point: neither "+-1" nor the parser's own "inf" and "nan".
    static bool startsNumber(std::string_view text) {
        if (text.starts_with('+') || text.starts_with('-')) text.remove_prefix(1);
        return !text.empty() && (text.front() == '.' || (text.front() >= '0' && text.front() <= '9'));
    }

    void skipSpace() {
        const auto start = _rest.find_first_not_of(" \t\r\n\f");
        _rest.remove_prefix(std::min(start, _rest.size()));
    }

    void skipSeparator() {
        skipSpace();
        if (!_firstArgument && _rest.starts_with(',')) {
            _rest.remove_prefix(1);
            skipSpace();
        }
        _firstArgument = false;
    }

    std::string_view _rest;
    bool _firstArgument = true;
};

class PathReader {
  public:
    explicit PathReader(std::string_view text) : _tokens(text) {}

    std::optional<UIBezierPath> read() {
        while (!_tokens.atEnd()) {
            const char letter = _tokens.command();
            if (_path.isEmpty() && letter != 'M' && letter != 'm') return std::nullopt;
            if (!readCommand(letter)) return std::nullopt;
        }
        if (!_path.isFinite() || !std::isfinite(_path.bounds().size.width + _path.bounds().size.height)) {
            return std::nullopt;
        }
        return std::move(_path);
    }

  private:
    /// One letter holds for all the groups of arguments behind it.
    bool readCommand(char letter) {
        const bool relative = letter >= 'a' && letter <= 'z';
        char kind = relative ? static_cast<char>(letter - 'a' + 'A') : letter;
        if (kind == 'Z') {
            _path.closePath();
            _current = _subpathStart;
            _previous = kind;
            return true;
        }
        do {
            _origin = relative ? _current : CGPointZero;
            if (!readArguments(kind)) return false;
            _previous = kind;
            if (kind == 'M') kind = 'L';
        } while (_tokens.argumentFollows());
        return true;
    }

    bool readArguments(char kind) {
        switch (kind) {
            case 'M':
                return readMove();
            case 'L':
                return point(_current) && lineToCurrent();
            case 'H':
                return coordinate(_current.x, _origin.x) && lineToCurrent();
            case 'V':
                return coordinate(_current.y, _origin.y) && lineToCurrent();
            case 'C':
            case 'S':
                return readCubic(kind == 'S');
            case 'Q':
            case 'T':
                return readQuadratic(kind == 'T');
            case 'A':
                return readArc();
            default:
                return false;
        }
    }

    bool readMove() {
        if (!point(_current)) return false;
        _subpathStart = _current;
        _path.moveToPoint(_current);
        return true;
    }

    bool lineToCurrent() {
        startAgainAfterClose();
        _path.addLineToPoint(_current);
        return true;
    }

    bool readCubic(bool smooth) {
        const bool continues = _previous == 'C' || _previous == 'S';
        CGPoint first = continues ? mirrored(_control, _current) : _current;
        CGPoint end;
        if (!smooth && !point(first)) return false;
        if (!point(_control) || !point(end)) return false;
        startAgainAfterClose();
        _path.addCurveToPoint(end, first, _control);
        _current = end;
        return true;
    }

    bool readQuadratic(bool smooth) {
        const bool continues = _previous == 'Q' || _previous == 'T';
        _control = continues ? mirrored(_control, _current) : _current;
        CGPoint end;
        if (!smooth && !point(_control)) return false;
        if (!point(end)) return false;
        startAgainAfterClose();
        _path.addCurveToPoint(end, between(_current, _control, 2.0 / 3), between(end, _control, 2.0 / 3));
        _current = end;
        return true;
    }

    bool readArc() {
        SVGArc arc;
        CGFloat degrees = 0;
        CGPoint end;
        if (!_tokens.number(arc.rx) || !_tokens.number(arc.ry) || !_tokens.number(degrees)) return false;
        if (!_tokens.flag(arc.large) || !_tokens.flag(arc.sweep) || !point(end)) return false;
        arc.rotation = std::fmod(degrees, 360.0) * std::numbers::pi / 180;
        const CGPoint from = _current;
        _current = end;
        if (end == from) return true;
        if (arc.rx == 0 || arc.ry == 0) return lineToCurrent();
        startAgainAfterClose();
        addSVGArc(_path, from, end, arc);
        return true;
    }

    bool coordinate(CGFloat& value, CGFloat origin) {
        if (!_tokens.number(value)) return false;
        value += origin;
        return true;
    }

    bool point(CGPoint& p) { return coordinate(p.x, _origin.x) && coordinate(p.y, _origin.y); }

    /// What follows a close without a move begins where the closed part did.
    void startAgainAfterClose() {
        if (_path.elements().back().verb == UIBezierPath::Verb::close) _path.moveToPoint(_subpathStart);
    }

    PathTokens _tokens;
    UIBezierPath _path;
    CGPoint _current;
    CGPoint _subpathStart;
    CGPoint _origin;   ///< what the arguments count from: the current point of a relative command
    CGPoint _control;  ///< the last curve's, for the smooth ones
    char _previous = 0;
};

}  // namespace

std::optional<UIBezierPath> readSVGPath(std::string_view data) {
    return PathReader(data).read();
}
