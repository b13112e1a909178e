// The service worker: keeps the last good version of the whole app, so that it starts offline and at once.
// Files of two versions never meet: each version fills a store of its own, whole or not at all.

const version = '@ZENTARO_WEB_VERSION@';
const family = 'zentaro-';
const storeName = family + version;
const shell = [
    '/', '/style.css', '/page.js', '/app.js', '/screen.js', '/input.js', '/links.js', '/mirror.js',
    '/updates.js', '/zentaro.js', '/zentaro.wasm', '/manifest.webmanifest', '/icons/icon-192.png',
];

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

/** A page that was left a moment ago may still be counted, hence several looks. */
async function takeOver(asking) {
    for (let look = 0; look < 5; ++look) {
        const pages = await clients.matchAll({type: 'window', includeUncontrolled: true});
        if (pages.length <= 1) return skipWaiting();
        await new Promise((resolve) => setTimeout(resolve, 100));
    }
    return asking.postMessage('in use');
}

/** A page that has only begun to start asks for this version; any other that runs keeps its own. */
addEventListener('message', (event) => {
    if (event.data === 'take over') event.waitUntil(takeOver(event.source));
});
