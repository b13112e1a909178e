// Links: the address bar follows the settled view, and links arrive by address, history, paste and drop, also as
// pictures that say which view they show.
// Any text may come; it goes to the app as it is, which decides what is a link, and never into the page.
import {callApp} from './app.js';

const shortestPause = 1000;  // ms between two addresses; browsers refuse more than 100 in 30 s
const answerTime = 2000;     // ms in which a step of the history mostly has told its view's path
const longestLink = 65536;   // characters; what the stack of the program takes
const longestName = 255;     // characters of a file's name
const mostOfPicture = 2 ** 26;  // bytes that are looked at

/** The path of the view that settled last; null before the first. */
let shown = null;
let timer = 0;
let writtenAt = -Infinity;
/** Whether a link came and nobody touched the app since: the next view is the link's, a step of the history. */
let opened = false;
/** Whether a step of the history is on its way: until its view has settled, what is shown is not the last path. */
let underWay = false;
let copying = null;
let picture = new Uint8Array();
/** How often the user can go back within the app, each time an entry of the history, and the path that was shown
 * when the first of them was added. */
let steps = 0;
let pathBelow = '';
/** Whether entries of screens that were closed in the app are being taken back. */
let takingBack = false;

function openLink(text) {
    if (text.length <= longestLink) callApp('zentaroOpenLink', text);
}

/** Whatever the address says instead, query and fragment included, gives way to the path of what is shown. */
function writeAddress() {
    timer = 0;
    if (shown === null || location.pathname + location.search + location.hash === shown) return;
    writtenAt = performance.now();
    try {
        history[opened ? 'pushState' : 'replaceState'](opened ? null : history.state, '', shown);
        opened = false;
    } catch {
        timer = setTimeout(writeAddress, answerTime);
    }
}

function writeAddressIn(wait) {
    clearTimeout(timer);
    timer = 0;
    if (wait > 0) timer = setTimeout(writeAddress, wait);
    else writeAddress();
}

export function viewSettled(path) {
    shown = path;
    underWay = false;
    writeAddressIn(writtenAt + shortestPause - performance.now());
}

/** Back, forward, or an address that was edited: another view, or nothing that the app takes. */
function addressChanged() {
    const isShown = !underWay && location.pathname === shown;
    if (!isShown) {
        underWay = true;
        openLink(location.pathname);
    }
    writeAddressIn(isShown ? shortestPause : answerTime);
}

const stepsOfEntry = () => history.state?.steps ?? 0;

/** Screens of the app came or went: the browser's way back leads through them. */
export function stepsBack(count) {
    if (count > steps && steps === 0) pathBelow = location.pathname;
    const spare = stepsOfEntry() - count;
    try {
        while (steps < count) {
            history.pushState({steps: steps + 1}, '', location.href);
            steps++;
        }
    } catch {
        // Too many in too short a time for this browser: its way back leads past this screen.
        return;
    }
    steps = count;
    if (spare <= 0) return;
    takingBack = true;
    history.go(-spare);
}

/** The browser went to an entry of the history. One of a screen that is no longer there is stepped over. */
function wentTo() {
    const target = stepsOfEntry();
    if (target > steps) {
        history.back();
        return;
    }
    const leavesScreens = target < steps || takingBack;
    takingBack = false;
    for (; steps > target; --steps) callApp('zentaroKey', 'BrowserBack', 0, 0, performance.now());
    if (leavesScreens && (target > 0 || location.pathname === pathBelow)) writeAddressIn(0);
    else addressChanged();
}

/** The view that the page was opened at. Query and fragment are nobody's. */
export function openFirstLink() {
    // Loaded anew, it shows none of the screens of before.
    if (stepsOfEntry()) history.replaceState(null, '');
    if (location.pathname !== '/') openLink(location.pathname);
}

function linkArrived(event, text) {
    event.preventDefault();
    if (!text) return;
    opened = true;
    openLink(text);
}

/** What the program reads while it opens a picture. */
export const pictureBytes = (offset, count) => picture.subarray(offset, offset + count);

async function pictureArrived(file) {
    let bytes = new Uint8Array();
    try {
        bytes = new Uint8Array(await file.slice(0, mostOfPicture).arrayBuffer());
    } catch {
        // A folder, or a file that has gone: it opens as one that is no picture.
    }
    opened = true;
    picture = bytes;
    callApp('zentaroOpenPicture', file.name.slice(0, longestName));
    picture = new Uint8Array();
}

function dropped(event) {
    event.preventDefault();
    const [file] = event.dataTransfer.files;
    if (file) pictureArrived(file);
    else linkArrived(event, droppedText(event.dataTransfer));
}

function droppedText(data) {
    const addresses = data.getData('text/uri-list').split(/\r?\n/).filter((line) => line && line[0] !== '#');
    return addresses[0] ?? data.getData('text/plain');
}

/** Pages that are not secure have no interface to the clipboard; there a copy event carries the text. */
function copyByEvent(text) {
    copying = text;
    const done = document.execCommand('copy');
    copying = null;
    return done;
}

/** Whether it worked. */
export async function setClipboardText(text) {
    try {
        if (!navigator.clipboard) return copyByEvent(text);
        await navigator.clipboard.writeText(text);
        return true;
    } catch {
        return copyByEvent(text);
    }
}

export function watchLinks() {
    for (const touch of ['pointerdown', 'wheel', 'keydown']) {
        addEventListener(touch, () => { opened = false; }, {capture: true, passive: true});
    }
    addEventListener('popstate', wentTo);
    addEventListener('paste', (event) => linkArrived(event, event.clipboardData?.getData('text/plain')));
    addEventListener('dragover', (event) => event.preventDefault());
    addEventListener('drop', dropped);
    addEventListener('copy', (event) => {
        event.clipboardData?.setData('text/plain', copying ?? location.origin + (shown ?? location.pathname));
        event.preventDefault();
    });
}
