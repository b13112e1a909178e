// Small documents from servers, and links that open beside the app.
// Answers are kept here until the app, told of one, has taken its bytes.
import {callApp} from './app.js';

// The app's own names for them.
const unknown = -1;
const timedOut = -1001;
const tooLong = -1103;

class Refusal extends Error {
    constructor(code, message) {
        super(message);
        this.code = code;
    }
}

let answer = null;

/** Not a byte more than `largest` is kept. */
async function read(response, largest) {
    const bytes = new Uint8Array(largest);
    let size = 0;
    const reader = response.body?.getReader();
    while (reader) {
        const {done, value} = await reader.read();
        if (done) break;
        if (size + value.length > largest) {
            reader.cancel().catch(() => {});
            throw new Refusal(tooLong, `The answer is longer than ${largest} bytes`);
        }
        bytes.set(value, size);
        size += value.length;
    }
    return bytes.subarray(0, size);
}

function tell(number, status, code, reason, bytes) {
    answer = {number, bytes};
    callApp('zentaroFetched', number, status, code, reason, bytes.length);
    answer = null;
}

const codeOf = (error) => error.code < 0 ? error.code : error.name === 'TimeoutError' ? timedOut : unknown;

/** Seconds and bytes. The whole answer must be there in time. */
export async function fetchDocument(number, url, timeout, largest) {
    let status = 0;
    let bytes;
    try {
        const signal = AbortSignal.timeout(timeout * 1000);
        const response = await fetch(url, {cache: 'no-store', credentials: 'omit', signal});
        status = response.status;
        bytes = await read(response, largest);
    } catch (error) {
        tell(number, status, codeOf(error), error.message, new Uint8Array());
        return;
    }
    tell(number, status, 0, '', bytes);
}

export const fetchedBytes = (number) => answer?.number === number ? answer.bytes : new Uint8Array();

/** A tab of its own, which cannot reach this one. Browsers open them for the user's taps alone. */
export function openURL(url) {
    // The tap is used up by the opening, which tells nothing of itself.
    const opens = navigator.userActivation?.isActive ?? true;
    window.open(url, '_blank', 'noopener');
    return opens;
}
