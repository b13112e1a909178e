// Line breaking over the browser's measured widths: at spaces, and inside words that are wider than a line.
// What was laid out lately is kept: views measure the same few words at every repaint.
#include "hosts/web/web_text.h"

#include <cmath>
#include <emscripten/emscripten.h>

// clang-format off
/// Module.text.font(family, size, bold) answers a font as canvases take it. Module.text.layOut answers the lines with
/// their widths, the widest width, and the ascent and height of a line.
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

    function wrapped(paragraph, width) {
        const fits = function(line) { return widthOf(line) <= width + slack; };
        if (!(width > 0) || fits(paragraph)) return [paragraph];
        const lines = [];
        let line = null;
        paragraph.split(" ").forEach(function(word) {
            const longer = line === null ? word : line + " " + word;
            if (fits(longer)) {
                line = longer;
                return;
            }
            if (line !== null) lines.push(line);
            line = word;
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

    Module.text = {
        font: function(family, size, bold) {
            const name = family ? "'" + family.replace(/[^A-Za-z0-9 -]/g, "") + "', " : "";
            return (bold ? "bold " : "") + size + "px " + name + systemFamily;
        },
        layOut: function(text, font, size, width, singleLine) {
            const key = [font, singleLine, width, text].join(newLine);
            let found = kept.get(key);
            if (!found) {
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

CGSize measure(const std::string& text, const UIFont& font, CGFloat width) {
    double height = 0;
    const double widest = zentaroMeasureText(text.c_str(), font.family.c_str(), font.pointSize,
                                             font.bold ? 1 : 0, width, &height);
    return {std::ceil(widest), std::ceil(height)};
}

}  // namespace WebText
