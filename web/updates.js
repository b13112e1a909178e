// Works offline, and gets new versions: the page's side of the service worker.
// A running page keeps the version it started with; the next start changes before it loads the app.

const worker = () => navigator.serviceWorker;
const patience = 3000;  // ms for a new version to take over; after that the old one starts

/** Whether a newer version waits, takes over, and the page is about to start again with it. */
export async function handedOver() {
    if (!worker()?.controller) return false;
    const registration = await worker().getRegistration().catch(() => null);
    if (!registration?.waiting) return false;
    return new Promise((resolve) => {
        worker().addEventListener('controllerchange', () => {
            resolve(true);
            location.reload();
        }, {once: true});
        // It refuses while other pages run the old version.
        navigator.serviceWorker.addEventListener('message', () => resolve(false), {once: true});
        setTimeout(() => resolve(false), patience);
        registration.waiting.postMessage('take over');
    });
}

/** After the first frame, which must not wait for it. Browsers refuse on pages that are not secure. */
export function keepOffline() {
    worker()?.register('/sw.js', {updateViaCache: 'none'}).catch(() => {});
}
