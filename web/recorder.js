// Films of the canvas: the browser records, plays and hands out what it recorded; the app only says when.
// What is not saved or shared is gone with the page: a page has no place of its own for films.
import {callApp} from './app.js';
import {steadyCopy} from './steady.js';

const canvas = document.getElementById('screen');
const dialog = document.getElementById('preview');
const video = dialog.querySelector('video');
const message = dialog.querySelector('p');
const shareButton = document.getElementById('preview-share');

const fastest = 60;  // frames a second
const fragment = 500;  // ms, of film that a crash of the recorder may cost
const types = ['video/mp4;codecs=avc1.640028', 'video/mp4', 'video/webm;codecs=vp9', 'video/webm;codecs=vp8', 'video/webm'];

const shortest = 1000;  // ms, of a film: browsers make none of a single picture
const patience = 4000;  // ms, for the beginning of a film that is stopped before it

let recorder = null;
let begun = null;
let film = null;

const bestType = () => types.find((type) => MediaRecorder.isTypeSupported(type));

export const canRecord = () =>
    typeof MediaRecorder === 'function' && typeof canvas.captureStream === 'function' && Boolean(bestType());

/** Starts a film of the canvas; answers why not, '' for success. */
export function startRecording() {
    if (recorder) return 'the last film is not finished';
    const parts = [];
    const steady = steadyCopy();
    try {
        recorder = new MediaRecorder(steady.copy.captureStream(fastest), {mimeType: bestType(), videoBitsPerSecond: 8e6});
        const mine = recorder;
        let failure = '';
        begun = null;
        // A page that nobody sees draws nothing; the film goes on when it does.
        const rest = () => {
            if (document.hidden && mine.state === 'recording') mine.pause();
            else if (!document.hidden && mine.state === 'paused') mine.resume();
        };
        mine.addEventListener('start', () => { begun = performance.now(); });
        mine.addEventListener('dataavailable', (event) => event.data.size && parts.push(event.data));
        mine.addEventListener('error', (event) => { failure = String(event.error?.message ?? 'the recorder failed'); });
        mine.addEventListener('stop', () => {
            steady.end();
            document.removeEventListener('visibilitychange', rest);
            for (const track of mine.stream.getTracks()) track.stop();
            if (recorder === mine) recorder = null;
            film = parts.length ? new Blob(parts, {type: mine.mimeType}) : null;
            callApp('zentaroRecordingEnded', failure || (film ? '' : 'nothing was filmed'), film ? 1 : 0);
        });
        mine.start(fragment);
        document.addEventListener('visibilitychange', rest);
        return '';
    } catch (error) {
        recorder = null;
        steady.end();
        return String(error.message ?? error);
    }
}

/** Whether there is a film to end; the app hears of the end once it is whole. */
export function stopRecording() {
    if (!recorder) return false;
    const mine = recorder;
    // One that ended by itself a moment ago is about to say so.
    const end = () => { if (mine.state !== 'inactive') mine.stop(); };
    const endSoon = () => setTimeout(end, Math.max(0, begun + shortest - performance.now()));
    if (begun !== null) {
        endSoon();
    } else {
        mine.addEventListener('start', endSoon);
        setTimeout(end, patience);
    }
    return true;
}

function file() {
    const now = new Date();
    const two = (number) => String(number).padStart(2, '0');
    const day = [now.getFullYear(), two(now.getMonth() + 1), two(now.getDate())].join('-');
    const time = [now.getHours(), now.getMinutes(), now.getSeconds()].map(two).join('.');
    const ending = film.type.startsWith('video/mp4') ? 'mp4' : 'webm';
    return new File([film], `Zentaro ${day} at ${time}.${ending}`, {type: film.type.split(';')[0]});
}

/** Shows the last film in the browser's player. */
export function showPreview() {
    video.src = URL.createObjectURL(film);
    shareButton.hidden = !navigator.canShare?.({files: [file()]});
    message.textContent = 'Your recording';
    dialog.showModal();
    video.play().catch(() => {});
}

/** For good: the app shows a film once. */
export function hidePreview() {
    film = null;
    if (dialog.open) dialog.close();
    // Browsers leave the focus on a button that is no longer shown until they next lay the page out.
    if (dialog.contains(document.activeElement)) document.activeElement.blur();
    if (!video.src) return;
    video.pause();
    URL.revokeObjectURL(video.src);
    video.removeAttribute('src');
    video.load();
}

function save() {
    const saved = file();
    const link = document.createElement('a');
    link.href = URL.createObjectURL(saved);
    link.download = saved.name;
    link.click();
    setTimeout(() => URL.revokeObjectURL(link.href), 60000);
    message.textContent = `Saved as ${saved.name}`;
}

function share() {
    navigator.share({files: [file()], title: 'Zentaro'}).catch((error) => {
        if (error.name !== 'AbortError') message.textContent = `Not shared: ${error.message}`;
    });
}

const finish = () => callApp('zentaroPreviewFinished');

export function watchPreview() {
    document.getElementById('preview-save').addEventListener('click', save);
    shareButton.addEventListener('click', share);
    document.getElementById('preview-done').addEventListener('click', finish);
    dialog.addEventListener('cancel', (event) => {
        event.preventDefault();
        finish();
    });
    // Some browsers close a dialog without having asked.
    dialog.addEventListener('close', () => film && finish());
    video.addEventListener('error', () => {
        if (film) message.textContent = 'This film is too short to be played.';
    });
    // Keys are the player's here, not the app's.
    for (const type of ['keydown', 'keyup']) dialog.addEventListener(type, (event) => event.stopPropagation());
}
