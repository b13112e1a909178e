// Fingers, mouse, pen, wheel, trackpad and keys: what the browser reports becomes the app's events.
// Everything that the browser would do with them itself (scroll, zoom, select, menus) is held back.
import {callApp} from './app.js';
import {appPoint} from './screen.js';

const began = 0, moved = 1, ended = 2, cancelled = 3;  // the app's phases of a touch
const pixelsPerNotch = 100, linesPerNotch = 3;
const largestPinchStep = 25;  // of a wheel event's units; a turned wheel with Ctrl held gives 100 and more

const stage = document.getElementById('stage');
/** The pointers that are down, by their id, with their last place. */
const down = new Map();
let gestureScale = 1;

const suppress = (event) => event.preventDefault();

function touch(phase, id, point, time) {
    callApp('zentaroPointer', phase, id, point.x, point.y, time);
}

function pointerDown(event) {
    if (event.pointerType === 'mouse' && event.button !== 0) return;
    // A ring around a button that the keyboard chose has no place in front of a finger.
    if (document.activeElement !== document.body) document.activeElement?.blur();
    try {
        stage.setPointerCapture(event.pointerId);
    } catch {
        // It was lifted already; its end follows.
    }
    const point = appPoint(event.clientX, event.clientY);
    down.set(event.pointerId, point);
    touch(began, event.pointerId, point, event.timeStamp);
}

function pointerMove(event) {
    if (!down.has(event.pointerId)) return;
    // While another button stays down, browsers report a released one as a movement.
    if (event.pointerType === 'mouse' && !(event.buttons & 1)) {
        pointerUp(event);
        return;
    }
    // Where frames are slow, one event holds many moves: a throw's speed is in them.
    const parts = event.getCoalescedEvents?.() ?? [];
    for (const part of parts.length ? parts : [event]) {
        const {x, y} = down.get(event.pointerId);
        const point = appPoint(part.clientX, part.clientY);
        if (point.x === x && point.y === y) continue;
        down.set(event.pointerId, point);
        touch(moved, event.pointerId, point, part.timeStamp);
    }
}

function pointerUp(event) {
    if (!down.delete(event.pointerId)) return;
    touch(ended, event.pointerId, appPoint(event.clientX, event.clientY), event.timeStamp);
}

/** A palm, a system gesture, another window: the place of the event is not to be trusted. */
function pointerLost(event) {
    const last = down.get(event.pointerId);
    if (!last) return;
    down.delete(event.pointerId);
    touch(cancelled, event.pointerId, last, event.timeStamp);
}

export function cancelPointers() {
    const lost = [...down];
    down.clear();
    for (const [id, point] of lost) touch(cancelled, id, point, performance.now());
}

function wheel(event) {
    event.preventDefault();
    const point = appPoint(event.clientX, event.clientY);
    if (event.ctrlKey) {
        const step = Math.max(-largestPinchStep, Math.min(largestPinchStep, event.deltaY));
        if (step) callApp('zentaroMagnify', point.x, point.y, Math.exp(-step / 100), event.timeStamp);
        return;
    }
    const perNotch = [pixelsPerNotch, linesPerNotch, 1][event.deltaMode] ?? pixelsPerNotch;
    const steps = -event.deltaY / perNotch;
    if (steps) callApp('zentaroWheel', point.x, point.y, steps, event.timeStamp);
}

/** Safari tells of a trackpad's pinch by its whole factor, and of fingers on the screen twice. */
function gesture(event) {
    event.preventDefault();
    if (event.type === 'gesturestart') gestureScale = 1;
    const factor = event.scale / gestureScale;
    if (down.size || !Number.isFinite(factor) || factor <= 0) return;
    gestureScale = event.scale;
    const point = appPoint(event.clientX, event.clientY);
    if (factor !== 1) callApp('zentaroMagnify', point.x, point.y, factor, event.timeStamp);
}

/** Tab walks through the mirror, whose buttons take Enter and Space; pasting comes as an event of its own. */
function isBrowsers(event, control) {
    const atButton = event.target instanceof HTMLButtonElement;
    return event.isComposing || event.key === 'Tab' || event.key === 'BrowserBack' ||
        (atButton && (event.key === 'Enter' || event.key === ' ')) ||
        (control && event.key.toLowerCase() === 'v');
}

function keyDown(event) {
    const typesByAltGraph = event.getModifierState('AltGraph');
    const control = !typesByAltGraph && (event.ctrlKey || event.metaKey);
    if (isBrowsers(event, control) || (event.altKey && !typesByAltGraph)) return;
    const used = callApp('zentaroKey', event.key, event.repeat ? 1 : 0, control ? 1 : 0, event.timeStamp);
    if (used) event.preventDefault();
}

export function watchInput() {
    stage.addEventListener('pointerdown', pointerDown);
    stage.addEventListener('pointermove', pointerMove);
    stage.addEventListener('pointerup', pointerUp);
    stage.addEventListener('pointercancel', pointerLost);
    stage.addEventListener('lostpointercapture', pointerLost);
    stage.addEventListener('wheel', wheel, {passive: false});
    for (const type of ['gesturestart', 'gesturechange', 'gestureend']) {
        document.addEventListener(type, gesture);
    }
    // Without their defaults: no double-tap zoom, no callout, no selection, no mouse made of fingers.
    for (const type of ['touchstart', 'touchmove', 'touchend', 'mousedown']) {
        stage.addEventListener(type, suppress, {passive: false});
    }
    for (const type of ['contextmenu', 'selectstart', 'dragstart']) document.addEventListener(type, suppress);
    addEventListener('keydown', keyDown);
}
