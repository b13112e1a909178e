// Sharing: the browser's own sheet where it takes files; else the clipboard, a download, a mail.
// Everything begins within the user's tap, and is answered when the browser has done or refused it.
import {callApp} from './app.js';
import {setClipboardText} from './links.js';

const type = 'image/png';

const answer = (number, done, message) => callApp('zentaroShared', number, done ? 1 : 0, message);

const fileOf = (what) => new File([what.picture], what.name, {type});

export function hasShareSheet() {
    return Boolean(navigator.share && navigator.canShare?.({files: [new File([''], 'zentaro.png', {type})]}));
}

async function shareBySheet({subject, text, link, ...what}) {
    const shared = {title: subject, text};
    if (link) shared.url = link;
    if (what.picture) shared.files = [fileOf(what)];
    try {
        await navigator.share(shared);
        return '';
    } catch (refused) {
        // The user closed it, or has it open already.
        if (['AbortError', 'InvalidStateError'].includes(refused.name)) return null;
        throw new Error('The browser does not share this.', {cause: refused});
    }
}

async function copy(what) {
    const text = new Blob([what.textWithLink], {type: 'text/plain'});
    try {
        const parts = {'text/plain': text, [type]: fileOf(what)};
        await navigator.clipboard.write([new ClipboardItem(parts)]);
        return 'Copied';
    } catch {
        if (!await setClipboardText(what.textWithLink)) throw new Error('The clipboard does not answer.');
        return 'Text and link copied';
    }
}

function follow(address, name = null) {
    const anchor = document.createElement('a');
    anchor.href = address;
    if (name !== null) anchor.download = name;
    anchor.click();
}

async function download(what) {
    const address = URL.createObjectURL(fileOf(what));
    follow(address, what.name);
    setTimeout(() => URL.revokeObjectURL(address), 60000);
    return 'Downloaded';
}

async function mail(what) {
    follow(`mailto:?subject=${encodeURIComponent(what.subject)}&body=${encodeURIComponent(what.textWithLink)}`);
    return '';
}

const ways = {sheet: shareBySheet, copy, download, mail};

/** `what`: subject, text, link and both in one, a file's name and its bytes or null. */
export function share(number, way, what) {
    ways[way](what).then(
        (message) => answer(number, message !== null, message ?? ''),
        (failure) => answer(number, false, failure.message));
}
