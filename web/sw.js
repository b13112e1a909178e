// The service worker: keeps the last good version of the whole app, so that it starts offline and at once.
// Files of two versions never meet: each version fills a store of its own, whole or not at all.

const version = '@ZENTARO_WEB_VERSION@';
const family = 'zentaro-';
const storeName = family + version;
const shell = ['/', @ZENTARO_WEB_FILES@];

/** The server is asked for each file, whatever caches on the way would say: they may hold other versions'. */
async function fillStore() {
    const store = await caches.open(storeName);
    try {
        await store.addAll(shell.map((path) => new Request(path, {cache: 'no-cache'})));
    } catch (error) {
        await caches.delete(storeName);
        throw error;
    }
}

async function removeOtherStores() {
    const names = await caches.keys();
    await Promise.all(names.filter((name) => name.startsWith(family) && name !== storeName)
        .map((name) => caches.delete(name)));
}

async function answer(request, path) {
    const store = await caches.open(storeName);
    return (await store.match(path)) ?? fetch(request);
}

addEventListener('install', (event) => event.waitUntil(fillStore()));
addEventListener('activate', (event) => event.waitUntil(removeOtherStores()));

addEventListener('fetch', (event) => {
    const {request} = event;
    const url = new URL(request.url);
    if (request.method !== 'GET' || url.origin !== location.origin) return;
    // Every path is a view of the one page.
    const path = request.mode === 'navigate' ? '/' : url.pathname;
    if (shell.includes(path)) event.respondWith(answer(request, path));
});

const longestLook = 2500;  // ms
/** Ids of the pages that answered. */
const running = new Set();

/** Unless another page runs. One that was left a moment ago is still counted, on a slow device for seconds, but does
 * not answer; hence several looks, but none after `end`, when the asking page waits no longer. */
async function takeOver(asking, end) {
    running.clear();
    const last = Math.min(end, Date.now() + longestLook);
    while (Date.now() < last) {
        const pages = await clients.matchAll({type: 'window', includeUncontrolled: true});
        const others = pages.filter((page) => page.id !== asking.id);
        if (others.length === 0) return skipWaiting();
        if (others.some((page) => running.has(page.id))) break;
        for (const page of others) page.postMessage('do you run?');
        await new Promise((resolve) => setTimeout(resolve, 50));
    }
    return asking.postMessage('in use');
}

/** A page that has only begun to start asks for this version; any other that runs keeps its own. */
addEventListener('message', (event) => {
    if (event.data === 'I run') running.add(event.source.id);
    if (event.data.takeOverBefore) event.waitUntil(takeOver(event.source, event.data.takeOverBefore));
});
