// Line breaking over the browser's measured widths: at spaces, between the characters of scripts without
// them, and inside words that are wider than a line. What was laid out lately is kept: views measure the same
// few words at every repaint.
#include "hosts/web/web_text.h"

#include <cmath>
#include <emscripten/emscripten.h>

// clang-format off
/// Module.text.font(families, size, bold) answers a font as canvases take it; the families are divided by commas.
/// Module.text.layOut answers the lines with their widths, the widest width, and the ascent and height of a line. A font
/// of the page's own arrives later: the first one who measures it sends for it, and is told when it is there.
EM_JS(void, zentaroPrepareText, (), {
    const measuring = document.createElement("canvas").getContext("2d");
    const systemFamily = "system-ui, -apple-system, 'Segoe UI', Roboto, sans-serif";
    const kept = new Map();
    const mostKept = 256;
    // By their numbers: tools between here and the page disagree about escapes.
    const newLine = String.fromCharCode(0x0A);
    const carriageReturn = String.fromCharCode(0x0D);
    const ellipsis = String.fromCharCode(0x2026);
    // Sums of widths may differ from the width of a sum in the last digits.
    const slack = 0.01;

    function widthOf(text) {
        return measuring.measureText(text).width;
    }

    // How many of the characters fit; fits must be true for few and false for many.
    function mostThatFit(characters, fits) {
        let low = 0;
        let high = characters.length;
        while (low < high) {
            const middle = (low + high + 1) >> 1;
            if (fits(characters.slice(0, middle).join(""))) low = middle;
            else high = middle - 1;
        }
        return low;
    }

    function shortened(line, width) {
        if (!(width > 0) || widthOf(line) <= width + slack) return line;
        const characters = Array.from(line);
        const count = mostThatFit(characters, function(start) {
            return widthOf(start.trimEnd() + ellipsis) <= width + slack;
        });
        return characters.slice(0, count).join("").trimEnd() + ellipsis;
    }

    // Chinese and Japanese have no spaces: lines end behind any of these characters.
    function isIdeographic(code) {
        return (code >= 0x2E80 && code <= 0x9FFF) || (code >= 0xF900 && code <= 0xFAFF) ||
            (code >= 0xFF00 && code <= 0xFFEF) || (code >= 0x20000 && code <= 0x3FFFF);
    }

    // Closing marks and small kana, which begin no line, and opening marks, which end none.
    const notFirst = String.fromCharCode(
        0x3001, 0x3002, 0xFF0C, 0xFF0E, 0x30FB, 0xFF1A, 0xFF1B, 0xFF1F, 0xFF01, 0xFF09, 0x300D, 0x300F, 0x3011,
        0x3015, 0x3009, 0x300B, 0x30FC, 0x3005, 0x3041, 0x3043, 0x3045, 0x3047, 0x3049, 0x3063, 0x3083, 0x3085,
        0x3087, 0x30A1, 0x30A3, 0x30A5, 0x30A7, 0x30A9, 0x30C3, 0x30E3, 0x30E5, 0x30E7);
    const notLast = String.fromCharCode(0xFF08, 0x300C, 0x300E, 0x3010, 0x3014, 0x3008, 0x300A);

    // What a line takes whole: words with the space before them, single characters of the others.
    function piecesOf(paragraph) {
        const pieces = [];
        let previous = "";
        Array.from(paragraph).forEach(function(character) {
            const breaks = character === " " || previous === "" ||
                ((isIdeographic(character.codePointAt(0)) || isIdeographic(previous.codePointAt(0))) &&
                 previous !== " " && !notFirst.includes(character) && !notLast.includes(previous));
            if (breaks) pieces.push(character);
            else pieces[pieces.length - 1] += character;
            previous = character;
        });
        return pieces;
    }

    function wrapped(paragraph, width) {
        const fits = function(line) { return widthOf(line) <= width + slack; };
        if (!(width > 0) || fits(paragraph)) return [paragraph];
        const lines = [];
        let line = null;
        piecesOf(paragraph).forEach(function(piece) {
            const longer = line === null ? piece : line + piece;
            if (fits(longer)) {
                line = longer;
                return;
            }
            if (line !== null) lines.push(line);
            line = line !== null && piece[0] === " " ? piece.slice(1) : piece;
            while (!fits(line)) {
                const characters = Array.from(line);
                const count = Math.max(mostThatFit(characters, fits), 1);
                if (count === characters.length) break;
                lines.push(characters.slice(0, count).join(""));
                line = characters.slice(count).join("");
            }
        });
        lines.push(line);
        return lines;
    }

    function laidOut(text, font, size, width, singleLine) {
        measuring.font = font;
        const metrics = measuring.measureText("Hg");
        // Older browsers know the letters' own extent alone.
        const ascent = metrics.fontBoundingBoxAscent || 0.95 * size;
        const descent = metrics.fontBoundingBoxDescent || 0.25 * size;
        const paragraphs = text.split(carriageReturn + newLine).join(newLine).split(newLine);
        const texts = singleLine ? [shortened(paragraphs.join(" "), width)]
            : [].concat.apply([], paragraphs.map(function(one) { return wrapped(one, width); }));
        const lines = texts.map(function(line) { return {text: line, width: widthOf(line)}; });
        return {
            lines: lines,
            width: lines.reduce(function(widest, line) { return Math.max(widest, line.width); }, 0),
            ascent: ascent,
            lineHeight: ascent + descent
        };
    }

    const asked = new Set();
    // Not by check(), which some browsers answer with yes as soon as another family of the list is there.
    function sendFor(font) {
        if (!document.fonts || asked.has(font)) return;
        asked.add(font);
        const faces = Array.from(document.fonts).filter(function(face) {
            return face.status !== "loaded" && font.includes(face.family.split('"').join(""));
        });
        if (faces.length === 0) return;
        Promise.all(faces.map(function(face) { return face.load(); })).then(function() {
            kept.clear();
            Module._zentaroFontsArrived();
        }, function() {});
    }

    // The first letter that has a direction gives it to the text, as on the other hosts.
    const letter = new RegExp("[" + String.fromCharCode(0x5C) + "p{L}]", "u");
    function isRightToLeft(text) {
        const found = letter.exec(text);
        const code = found ? found[0].codePointAt(0) : 0;
        return (code >= 0x0590 && code <= 0x08FF) || (code >= 0xFB1D && code <= 0xFEFC);
    }

    Module.text = {
        isRightToLeft: isRightToLeft,
        font: function(families, size, bold) {
            const names = families.split(",").filter(Boolean).map(function(family) {
                return "'" + family.replace(/[^A-Za-z0-9 -]/g, "") + "', ";
            });
            return (bold ? "bold " : "") + size + "px " + names.join("") + systemFamily;
        },
        layOut: function(text, font, size, width, singleLine) {
            const key = [font, singleLine, width, text].join(newLine);
            let found = kept.get(key);
            if (!found) {
                sendFor(font);
                if (kept.size >= mostKept) kept.clear();
                found = laidOut(text, font, size, width, singleLine);
                kept.set(key, found);
            }
            return found;
        }
    };
});
EM_JS(double, zentaroMeasureText, (const char* text, const char* family, double size, int bold, double width,
                                   double* height), {
    const font = Module.text.font(UTF8ToString(family), size, bold);
    const laidOut = Module.text.layOut(UTF8ToString(text), font, size, width, false);
    HEAPF64[height >> 3] = laidOut.lines.length * laidOut.lineHeight;
    return laidOut.width;
});
// clang-format on

namespace WebText {

void prepare() {
    zentaroPrepareText();
}

std::string familyList(const UIFont& font) {
    std::string list;
    for (const std::string& family : fontFamiliesFor(font))
        list += (list.empty() ? "" : ",") + family;
    return list;
}

CGSize measure(const std::string& text, const UIFont& font, CGFloat width) {
    double height = 0;
    const double widest = zentaroMeasureText(text.c_str(), familyList(font).c_str(), font.pointSize,
                                             font.bold ? 1 : 0, width, &height);
    return {std::ceil(widest), std::ceil(height)};
}

}  // namespace WebText
