// Plays a list of numbers on one of the browser's canvases, in JavaScript from its beginning to its end.
// display_list.cpp writes the list and gives the numbers their meaning.
#include <emscripten/emscripten.h>

#include "hosts/web/display_list.h"

// clang-format off
/// A canvas of Module.canvases: {stack: contexts, the one that is painted on last; layers: those to be used again}.
EM_JS(void, zentaroPlayDisplayList, (int id, const double* list, int count, const char* texts), {
    const surface = Module.canvases.get(id);
    const numbers = HEAPF64;
    const end = (list >> 3) + count;
    let at = list >> 3;
    let context = surface.stack[surface.stack.length - 1];

    function color() {
        const components = [0, 1, 2].map(function(i) { return Math.round(255 * numbers[at + i]); });
        const alpha = numbers[at + 3];
        at += 4;
        return "rgba(" + components.join(",") + "," + alpha + ")";
    }

    function rule() {
        return numbers[at++] ? "evenodd" : "nonzero";
    }

    function text() {
        const begin = texts + numbers[at];
        at += 2;
        return UTF8ToString(begin, numbers[at - 1]);
    }

    function path() {
        const last = at + 1 + numbers[at++];
        context.beginPath();
        while (at < last) {
            switch (numbers[at++]) {
                case 0: context.moveTo(numbers[at], numbers[at + 1]); at += 2; break;
                case 1: context.lineTo(numbers[at], numbers[at + 1]); at += 2; break;
                case 2:
                    context.bezierCurveTo(numbers[at], numbers[at + 1], numbers[at + 2], numbers[at + 3],
                                          numbers[at + 4], numbers[at + 5]);
                    at += 6;
                    break;
                default: context.closePath();
            }
        }
    }

    function beginLayer() {
        const depth = surface.stack.length - 1;
        const below = context;
        if (!surface.layers[depth]) {
            const layer = document.createElement("canvas");
            layer.width = below.canvas.width;
            layer.height = below.canvas.height;
            surface.layers[depth] = Module.canvasContext(layer);
        }
        context = surface.layers[depth];
        context.save();
        context.clearRect(0, 0, context.canvas.width, context.canvas.height);
        context.setTransform(below.getTransform());
        surface.stack.push(context);
    }

    function endLayer(alpha) {
        const layer = surface.stack.pop();
        layer.restore();
        context = surface.stack[surface.stack.length - 1];
        context.save();
        context.setTransform(1, 0, 0, 1, 0, 0);
        context.globalAlpha = alpha;
        context.drawImage(layer.canvas, 0, 0);
        context.restore();
    }

    function drawPicture() {
        const width = numbers[at + 1];
        const height = numbers[at + 2];
        const bytes = HEAPU8.subarray(numbers[at], numbers[at] + 4 * width * height);
        const picture = document.createElement("canvas");
        picture.width = width;
        picture.height = height;
        picture.getContext("2d").putImageData(new ImageData(new Uint8ClampedArray(bytes), width, height), 0, 0);
        context.drawImage(picture, numbers[at + 3], numbers[at + 4], numbers[at + 5], numbers[at + 6]);
        at += 7;
    }

    function drawText() {
        const words = text();
        const families = text();
        const size = numbers[at++];
        const font = Module.text.font(families, size, numbers[at++]);
        context.fillStyle = color();
        const x = numbers[at++];
        let y = numbers[at++];
        const width = numbers[at++];
        const alignment = numbers[at++];
        const laidOut = Module.text.layOut(words, font, size, width, numbers[at++] !== 0);
        context.font = font;
        context.textAlign = "left";
        context.direction = Module.text.isRightToLeft(words) ? "rtl" : "ltr";
        // Without a width, lines stand beside the widest one.
        const room = width > 0 ? width : laidOut.width;
        laidOut.lines.forEach(function(line) {
            context.fillText(line.text, x + (room - line.width) * alignment / 2, y + laidOut.ascent);
            y += laidOut.lineHeight;
        });
    }

    while (at < end) {
        switch (numbers[at++]) {
            case 0: context.save(); break;
            case 1: context.restore(); break;
            case 2: context.translate(numbers[at], numbers[at + 1]); at += 2; break;
            case 3: context.scale(numbers[at], numbers[at + 1]); at += 2; break;
            case 4: path(); context.clip(rule()); break;
            case 5: beginLayer(); break;
            case 6: endLayer(numbers[at++]); break;
            case 7:
                context.clearRect(numbers[at], numbers[at + 1], numbers[at + 2], numbers[at + 3]);
                at += 4;
                break;
            case 8:
                at += 4;
                context.fillStyle = color();
                context.fillRect(numbers[at - 8], numbers[at - 7], numbers[at - 6], numbers[at - 5]);
                break;
            case 9: path(); context.fillStyle = color(); context.fill(rule()); break;
            case 10:
                path();
                context.strokeStyle = color();
                context.lineWidth = numbers[at++];
                context.stroke();
                break;
            case 11: drawPicture(); break;
            default: drawText();
        }
    }
});
// clang-format on

void DisplayList::play(int canvas) const {
    zentaroPlayDisplayList(canvas, _numbers.data(), static_cast<int>(_numbers.size()), _texts.data());
}
