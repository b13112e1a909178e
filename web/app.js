// The way from the page into the app: its exported functions, and what happens when one of them fails.
// Events come at any time, also before the app runs and after it broke; those are dropped here, once for all.

let runtime = null;
let onBroken = () => {};

/** From now on calls reach the app. `broken` is told of the first one that threw. */
export function attachApp(module, broken) {
    runtime = module;
    onBroken = broken;
}

export function detachApp() {
    runtime = null;
}

/** Calls the app's `name` with numbers, and texts where a string is given; 0 while there is no app. */
export function callApp(name, ...values) {
    if (!runtime || !runtime['_' + name]) return 0;
    try {
        const types = values.map((value) => (typeof value === 'string' ? 'string' : 'number'));
        return types.includes('string')
            ? runtime.ccall(name, 'number', types, values)
            : runtime['_' + name](...values);
    } catch (error) {
        detachApp();
        onBroken(error);
        throw error;
    }
}
