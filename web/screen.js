// The screen: its size in points and pixels, how the app is turned in it, full screen, staying awake.
// The app is always in landscape; on a phone held upright it lies turned, and only this file knows.
import {callApp} from './app.js';

const canvas = document.getElementById('screen');
const insetProbe = document.getElementById('insets');
const touchFirst = matchMedia('(pointer: coarse)');

const present = {width: 0, height: 0, scale: 1, turned: false, insets: [0, 0, 0, 0]};
let awakeWanted = false;
let awake = null;
let scaleQuery = null;
let onTurned = () => {};

export const screenSize = () => present;

/** A place of the browser's window, in points of the app. */
export function appPoint(clientX, clientY) {
    return present.turned ? {x: clientY, y: present.height - clientX} : {x: clientX, y: clientY};
}

/** The safe area's distances from the app's own edges. */
function safeInsets() {
    const style = getComputedStyle(insetProbe);
    const [top, right, bottom, left] = ['Top', 'Right', 'Bottom', 'Left'].map(
        (side) => parseFloat(style['padding' + side]) || 0);
    return present.turned ? [right, bottom, left, top] : [top, right, bottom, left];
}

/** UIDeviceOrientation's numbers. */
function deviceOrientation() {
    const names = ['', 'portrait-primary', 'portrait-secondary', 'landscape-primary', 'landscape-secondary'];
    return Math.max(0, names.indexOf(screen.orientation?.type ?? ''));
}

function measure() {
    const width = Math.max(1, innerWidth);
    const height = Math.max(1, innerHeight);
    present.turned = touchFirst.matches && height > width;
    present.width = present.turned ? height : width;
    present.height = present.turned ? width : height;
    present.scale = devicePixelRatio || 1;
    present.insets = safeInsets();
}

/** How the stage and what lies over it are placed, as properties of the style sheet. */
function placement() {
    const lengths = {width: present.width, height: present.height};
    ['top', 'right', 'bottom', 'left'].forEach((side, i) => { lengths[`inset-${side}`] = present.insets[i]; });
    const properties = Object.entries(lengths).map(([name, points]) => [`--${name}`, `${points}px`]);
    return [...properties, ['--turn', present.turned ? `translateX(${present.height}px) rotate(90deg)` : 'none']];
}

function layOut() {
    const pixels = (points) => Math.max(1, Math.round(points * present.scale));
    // Setting a size empties the canvas, even the size that it has.
    if (canvas.width !== pixels(present.width)) canvas.width = pixels(present.width);
    if (canvas.height !== pixels(present.height)) canvas.height = pixels(present.height);
    for (const [name, value] of placement()) document.documentElement.style.setProperty(name, value);
}

function tellApp() {
    callApp('zentaroInsets', ...present.insets);
    callApp('zentaroResize', present.width, present.height, present.scale);
}

/** Runs before the frame's own callbacks, so that the emptied canvas is drawn before anybody sees it. */
function resized() {
    const before = {...present};
    measure();
    layOut();
    watchScale();
    if (present.turned !== before.turned) onTurned();
    if (JSON.stringify(present) !== JSON.stringify(before)) tellApp();
}

/** Zooming and moving to another display change the pixels per point. */
function watchScale() {
    scaleQuery?.removeEventListener('change', resized);
    scaleQuery = matchMedia(`(resolution: ${devicePixelRatio}dppx)`);
    scaleQuery.addEventListener('change', resized);
}

/** `turned` is called when the app begins to lie otherwise in the window: under fingers that are down, too. */
export function watchScreen(turned) {
    onTurned = turned;
    measure();
    layOut();
    watchScale();
    addEventListener('resize', resized);
    // From one landscape to the other only the insets change, and not every browser calls that a resize.
    addEventListener('orientationchange', resized);
    touchFirst.addEventListener('change', resized);
    screen.orientation?.addEventListener?.('change', () => {
        resized();
        callApp('zentaroOrientation', deviceOrientation());
    });
    document.addEventListener('fullscreenchange', holdLandscape);
    document.addEventListener('visibilitychange', stayAwake);
    holdLandscape();
}

/** What the app is told of the screen as soon as it runs. */
export function tellScreen() {
    callApp('zentaroInsets', ...present.insets);
    callApp('zentaroOrientation', deviceOrientation());
}

const ignoreRefusal = () => {};

/** Browsers allow this in full screen and in installed apps, some of them never. */
function holdLandscape() {
    try {
        screen.orientation?.lock?.('landscape').catch(ignoreRefusal);
    } catch {
        // Older ones throw where newer ones answer with a refusal.
    }
}

const fullscreenElement = () => document.fullscreenElement ?? document.webkitFullscreenElement ?? null;

export const isFullscreen = () => fullscreenElement() !== null;

export function setFullscreen(wanted) {
    if (wanted === isFullscreen()) return;
    const page = document.documentElement;
    const enter = page.requestFullscreen ?? page.webkitRequestFullscreen;
    const leave = document.exitFullscreen ?? document.webkitExitFullscreen;
    const done = wanted ? enter?.call(page, {navigationUI: 'hide'}) : leave?.call(document);
    done?.catch?.(ignoreRefusal);
}

export function keepAwake(wanted) {
    awakeWanted = wanted;
    stayAwake();
}

/** The browser takes the lock away whenever the page is hidden. */
async function stayAwake() {
    if (!awakeWanted) {
        const held = awake;
        awake = null;
        await held?.release().catch(ignoreRefusal);
        return;
    }
    if (document.visibilityState !== 'visible' || (awake && !awake.released)) return;
    try {
        awake = (await navigator.wakeLock?.request('screen')) ?? null;
        if (!awakeWanted) stayAwake();
    } catch {
        awake = null;
    }
}
