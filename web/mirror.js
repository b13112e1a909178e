// The mirror: real buttons and texts over what the app paints, for screen readers and the keyboard.
// They are found by focus and name only; fingers and mouse go through them to the app.
import {callApp} from './app.js';

const mirror = document.getElementById('mirror');
/** The elements on the page, by the app's id. */
const elements = new Map();
/** Ids of buttons, or null: where the keyboard is, and where it was before others came instead. */
let place = null;
let left = null;
/** The id of the button around which the app paints a ring, or null. */
let ringed = null;

function make(entry) {
    const element = document.createElement(entry.role === 'button' ? 'button' : 'p');
    // A text that changes is said: a flight begins, or pauses.
    if (entry.role !== 'button') element.setAttribute('aria-live', 'polite');
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
    keepFocus();
    followRing(entries.find((entry) => entry.focused)?.id ?? null);
}

/** Keys that the app takes itself move its ring; the keyboard's place on the page goes with it. */
function followRing(id) {
    for (const [each, element] of elements) element.classList.toggle('ringed', each === id);
    if (id === ringed) return;
    ringed = id;
    if (id !== null) elements.get(id).focus({preventScroll: true});
}

/** The keyboard's place is not lost with its button: it is the first of what came instead, and the old one again
 * when that is back. */
function keepFocus() {
    if (place !== null && !elements.has(place)) {
        left ??= place;
        place = null;
    }
    if (left === null || document.activeElement !== document.body) return;
    const back = elements.get(left);
    if (back) left = null;
    (back ?? mirror.querySelector('button'))?.focus();
}

export function watchMirror() {
    mirror.addEventListener('focusin', ({target}) => {
        place = [...elements].find(([, element]) => element === target)?.[0] ?? null;
        if (place !== null && place !== ringed) callApp('zentaroReached', place);
    });
    // Who goes on with a finger needs no place.
    addEventListener('pointerdown', () => { place = left = null; }, {capture: true, passive: true});
}
