// Links: the address bar follows the settled view, and links arrive by address, history, paste and drop.
// Any text may come; it goes to the app as it is, which decides what is a link, and never into the page.
import {callApp} from './app.js';

const shortestPause = 1000;  // ms between two addresses; browsers refuse more than 100 in 30 s
const answerTime = 2000;     // ms in which a link that shows a view has told its path
const longestLink = 65536;   // characters; what the stack of the program takes

/** The path of the view that settled last; null before the first. */
let shown = null;
let timer = 0;
let writtenAt = -Infinity;
/** When a link came that is to be a step of the history; its view's path is then added, not replaced. */
let openedAt = -Infinity;
let copying = null;

function openLink(text) {
    if (text.length <= longestLink) callApp('zentaroOpenLink', text);
}

/** Whatever the address says instead, query and fragment included, gives way to the path of what is shown. */
function writeAddress() {
    timer = 0;
    const adds = performance.now() - openedAt < answerTime;
    if (shown === null || location.pathname + location.search + location.hash === shown) return;
    openedAt = -Infinity;
    writtenAt = performance.now();
    try {
        history[adds ? 'pushState' : 'replaceState'](null, '', shown);
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
    writeAddressIn(writtenAt + shortestPause - performance.now());
}

/** Back, forward, or an address that was edited: another view, or nothing that the app takes. */
function addressChanged() {
    const isShown = location.pathname === shown;
    if (!isShown) openLink(location.pathname);
    writeAddressIn(isShown ? shortestPause : answerTime);
}

/** The view that the page was opened at. Query and fragment are nobody's. */
export function openFirstLink() {
    if (location.pathname !== '/') openLink(location.pathname);
}

function linkArrived(event, text) {
    event.preventDefault();
    if (!text) return;
    openedAt = performance.now();
    openLink(text);
}

function droppedText(data) {
    const addresses = data.getData('text/uri-list').split(/\r?\n/).filter((line) => line && line[0] !== '#');
    return addresses[0] ?? data.getData('text/plain');
}

/** Pages that are not secure have no interface to the clipboard; there a copy event carries the text. */
function copyByEvent(text) {
    copying = text;
    document.execCommand('copy');
    copying = null;
}

export function setClipboardText(text) {
    if (!navigator.clipboard) copyByEvent(text);
    else navigator.clipboard.writeText(text).catch(() => copyByEvent(text));
}

export function watchLinks() {
    addEventListener('popstate', addressChanged);
    addEventListener('paste', (event) => linkArrived(event, event.clipboardData?.getData('text/plain')));
    addEventListener('dragover', (event) => event.preventDefault());
    addEventListener('drop', (event) => linkArrived(event, droppedText(event.dataTransfer)));
    addEventListener('copy', (event) => {
        event.clipboardData?.setData('text/plain', copying ?? location.origin + (shown ?? location.pathname));
        event.preventDefault();
    });
}
