// Works offline, and gets new versions: the page's side of the service worker.
// A running page keeps the version it started with; the next start changes before it loads the app.

const worker = () => navigator.serviceWorker;
const patience = 5000;  // ms for a new version to take over; after that the old one starts
const settling = 500;  // ms after the page's loading, for its last requests (the icon's)

/** Chromium leaves a new worker waiting for minutes if it is to take over while the old one still answers requests. */
async function untilLoaded() {
    if (document.readyState !== 'complete') {
        await new Promise((resolve) => addEventListener('load', resolve, {once: true}));
    }
    await new Promise((resolve) => setTimeout(resolve, settling));
}

/** Whether a newer version waits, takes over, and the page is about to start again with it. */
export async function handedOver() {
    worker()?.addEventListener('message', (event) => {
        if (event.data === 'do you run?') event.source.postMessage('I run');
    });
    if (!worker()?.controller) return false;
    const registration = await worker().getRegistration().catch(() => null);
    if (!registration?.waiting) return false;
    await untilLoaded();
    return new Promise((resolve) => {
        // One that comes too late leaves the app that runs by then alone.
        worker().addEventListener('controllerchange', () => {
            if (document.documentElement.classList.contains('started')) return;
            resolve(true);
            location.reload();
        }, {once: true});
        // It refuses while other pages run the old version.
        worker().addEventListener('message', (event) => event.data === 'in use' && resolve(false));
        setTimeout(() => resolve(false), patience);
        registration.waiting.postMessage({takeOverBefore: Date.now() + patience - 1000});
    });
}

/** After the first frame, which must not wait for it. Browsers refuse on pages that are not secure. */
export function keepOffline() {
    worker()?.register('/sw.js', {updateViaCache: 'none'}).catch(() => {});
}
