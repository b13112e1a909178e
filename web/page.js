// The page around the app: loads it, tells it what happens to the page, does what it asks of the browser.
// The app finds all of that as Module.page, which is complete before its own script arrives.
import {attachApp, callApp, detachApp} from './app.js';
import {cancelPointers, watchInput} from './input.js';
import {openFirstLink, pictureBytes, setClipboardText, stepsBack, viewSettled, watchLinks} from './links.js';
import {showMirror, watchMirror} from './mirror.js';
import {fetchDocument, fetchedBytes, openURL} from './network.js';
import {canRecord, hidePreview, showPreview, startRecording, stopRecording, watchPreview} from './recorder.js';
import {isFullscreen, keepAwake, screenSize, setFullscreen, tellScreen, watchScreen} from './screen.js';
import {hasShareSheet, share} from './share.js';
import {handedOver, keepOffline} from './updates.js';

const stage = document.getElementById('stage');
const canvas = document.getElementById('screen');
const sorry = document.getElementById('sorry');
const lessMotion = matchMedia('(prefers-reduced-motion: reduce)');
let greeted = false;

const page = {
    width: () => screenSize().width,
    height: () => screenSize().height,
    scale: () => screenSize().scale,
    host: () => location.host,
    viewSettled,
    mirror: showMirror,
    stepsBack,
    setClipboardText,
    hasShareSheet,
    share,
    openURL,
    languages: () => navigator.languages.join('\n'),
    fetchDocument,
    fetchedBytes,
    pictureBytes,
    setFullscreen: (wanted) => setFullscreen(Boolean(wanted)),
    isFullscreen,
    keepAwake: (wanted) => keepAwake(Boolean(wanted)),
    canRecord,
    startRecording,
    stopRecording,
    showPreview,
    hidePreview,
    started,
    failed,
};

/** The first frame is on the screen. */
function started() {
    performance.mark('first frame');
    document.documentElement.classList.add('started');
    greet();
    keepOffline();
}

/** In the place of the app, for good. `sentence` replaces the one about WebGL and WebAssembly. */
function apologise(sentence) {
    if (!sorry.hidden) return;
    detachApp();
    hidePreview();
    stage.hidden = true;
    if (sentence) sorry.querySelector('p').textContent = sentence;
    sorry.hidden = false;
}

const drawsWebGL = () => typeof WebAssembly === 'object' && typeof WebGLRenderingContext === 'function' &&
    document.createElement('canvas').getContext('webgl') !== null;

/** The app cannot start here, or stopped; why is for developers. */
function failed(reason) {
    console.info(`zentaro: ${reason}`);
    apologise(drawsWebGL() ? 'Zentaro has stumbled over a fault of its own: please load it again.' : '');
}

function couldNotLoad(error) {
    console.info(`zentaro: ${error}`);
    apologise('Zentaro could not be loaded: please try again when the network is back.');
}

/** What the app must know before its first frame, which shows the address's view and not the top. */
function greet() {
    if (greeted) return;
    greeted = true;
    tellScreen();
    if (lessMotion.matches) callApp('zentaroReduceMotion', 1);
    if (document.hidden) callApp('zentaroVisibility', 0);
    openFirstLink();
}

function tellVisibility() {
    if (document.hidden) cancelPointers();
    callApp('zentaroVisibility', document.hidden ? 0 : 1);
}

function watchLife() {
    document.addEventListener('visibilitychange', tellVisibility);
    addEventListener('pageshow', (event) => event.persisted && tellVisibility());
    addEventListener('pagehide', (event) => event.persisted || callApp('zentaroTerminate'));
    addEventListener('focus', () => callApp('zentaroActive', 1));
    addEventListener('blur', () => callApp('zentaroActive', 0));
    lessMotion.addEventListener('change', () => callApp('zentaroReduceMotion', lessMotion.matches ? 1 : 0));
    // Only a loss whose default is prevented is ever followed by a restoration.
    canvas.addEventListener('webglcontextlost', (event) => {
        event.preventDefault();
        callApp('zentaroContextLost');
    });
    canvas.addEventListener('webglcontextrestored', () => callApp('zentaroContextRestored'));
}

/** Compiled while it arrives, or afterwards where the server calls it something else than WebAssembly. */
async function compile() {
    const response = await fetch('/zentaro.wasm');
    if (!response.ok) throw new Error(`zentaro.wasm: status ${response.status}`);
    const isNamed = (response.headers.get('Content-Type') ?? '').startsWith('application/wasm');
    return isNamed && WebAssembly.compileStreaming
        ? WebAssembly.compileStreaming(response)
        : WebAssembly.compile(await response.arrayBuffer());
}

/** Compilation begins now, beside the script's loading. */
function makeModule() {
    const compiled = compile();
    compiled.catch(() => {});
    const module = {
        page,
        canvas,
        print: (line) => console.log(line),
        printErr: (line) => console.info(line),
        instantiateWasm(imports, receive) {
            compiled.then((code) => WebAssembly.instantiate(code, imports))
                .then((instance) => receive(instance), couldNotLoad)
                .catch(failed);
            return {};
        },
        onRuntimeInitialized: () => attachApp(module, failed),
        postRun: greet,
        onAbort: failed,
    };
    return module;
}

function loadScript() {
    const script = document.createElement('script');
    script.src = '/zentaro.js';
    script.addEventListener('error', () => couldNotLoad('zentaro.js did not arrive'));
    document.head.append(script);
}

async function start() {
    if (typeof WebAssembly !== 'object' || typeof WebGLRenderingContext !== 'function') {
        failed('no WebGL or no WebAssembly');
        return;
    }
    if (await handedOver()) return;
    watchScreen(cancelPointers);
    watchInput();
    watchLinks();
    watchLife();
    watchMirror();
    watchPreview();
    globalThis.Module = makeModule();
    loadScript();
}

start();
