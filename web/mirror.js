// The mirror: real buttons and texts over what the app paints, for screen readers and the keyboard.
// They are found by focus and name only; fingers and mouse go through them to the app.
import {callApp} from './app.js';

const mirror = document.getElementById('mirror');
/** The elements on the page, by the app's id. */
const elements = new Map();

function make(entry) {
    const element = document.createElement(entry.role === 'button' ? 'button' : 'p');
    if (entry.role === 'button') {
        element.type = 'button';
        element.addEventListener('click', () => callApp('zentaroActivate', entry.id));
    }
    elements.set(entry.id, element);
    return element;
}

function setPlace(element, entry) {
    const place = {left: entry.x, top: entry.y, width: entry.w, height: entry.h};
    for (const [name, points] of Object.entries(place)) {
        const value = points + 'px';
        if (element.style[name] !== value) element.style[name] = value;
    }
}

/** What is gone goes; a button keeps its element, and so the focus, as long as the app has it. */
function removeMissing(entries) {
    const roles = new Map(entries.map((entry) => [entry.id, entry.role]));
    for (const [id, element] of elements) {
        if (roles.has(id) && (roles.get(id) === 'button') === (element.localName === 'button')) continue;
        element.remove();
        elements.delete(id);
    }
}

/** Shows the entries, in their order, with as few changes to the page as they allow. */
export function showMirror(json) {
    const entries = JSON.parse(json);
    removeMissing(entries);
    let next = mirror.firstElementChild;
    for (const entry of entries) {
        const element = elements.get(entry.id) ?? make(entry);
        if (element.textContent !== entry.label) element.textContent = entry.label;
        setPlace(element, entry);
        if (element === next) {
            next = next.nextElementSibling;
        } else {
            mirror.insertBefore(element, next);
        }
    }
}
