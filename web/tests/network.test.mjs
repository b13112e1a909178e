// Documents that the page asks servers for: what the app is told of good answers, bad ones and none.
// Servers are played by the browser's own interception; the app's ear is replaced.
import assert from 'node:assert/strict';
import {test} from 'node:test';
import {openApp} from './browser.mjs';

const [unknown, timedOut, tooLong] = [-1, -1001, -1103];

const cases = [
    ['/good', {status: 200, body: '{"café": 1}'}, [200, 0, '{"café": 1}']],
    ['/empty', {status: 204, body: ''}, [204, 0, '']],
    ['/missing', {status: 404, body: 'no'}, [404, 0, 'no']],
    ['/broken', {status: 500, body: 'sorry'}, [500, 0, 'sorry']],
    ['/full', {status: 200, body: ' '.repeat(1000)}, [200, 0, ' '.repeat(1000)]],
    ['/longer', {status: 200, body: ' '.repeat(1001)}, [200, tooLong, '']],
    ['/huge', {status: 200, body: ' '.repeat(20000000)}, [200, tooLong, '']],
    ['/closed', null, [0, unknown, '']],
    ['/silent', 'never', [0, timedOut, '']],
];

test('the app hears of every answer once, whole or not at all', async (t) => {
    const page = await openApp(t, '/', {expected: (text) => /Failed to load resource/.test(text)});
    for (const [path, answer] of cases) {
        await page.route(`**/documents${path}`, (route) => {
            if (answer === 'never') return;
            return answer ? route.fulfill(answer) : route.abort();
        });
    }
    for (const [path, answer, expected] of cases) {
        const told = await page.evaluate(async ([address, timeout]) => {
            const {fetchDocument, fetchedBytes} = await import('/network.js');
            const calls = [];
            const {ccall} = Module;
            Module.ccall = (name, ...rest) => {
                if (name !== 'zentaroFetched') return ccall(name, ...rest);
                const [, , [number, status, code, , size]] = rest;
                const bytes = fetchedBytes(number);
                calls.push([status, code, new TextDecoder().decode(bytes), bytes.length === size]);
                return 0;
            };
            await fetchDocument(7, address, timeout, 1000);
            Module.ccall = ccall;
            return [calls, fetchedBytes(7).length];
        }, [`/documents${path}`, answer === 'never' ? 0.2 : 20]);
        assert.deepEqual(told, [[[...expected, true]], 0], path);
    }
});
