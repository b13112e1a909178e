// Sharing on the page: what the browser's own interfaces receive, and real files.
// The interfaces are stubbed where the browser has them; what the app does with their answers is seen in the mirror.
import assert from 'node:assert/strict';
import {readFileSync} from 'node:fs';
import {test} from 'node:test';
import {button, desktop, keepPicture, openApp, patience, phone, press, shared, tablet, tap, untilView} from './browser.mjs';

const path = '/julia/-1.500000/-0.500000/-0.500000/0.500000';

/** `stub` runs on the page before its scripts. */
async function openWith(t, device, stub) {
    const page = await openApp(t, path, {device, init: stub});
    await untilView(page, (view) => view.width > 1.1, 'the view, fitted to the screen');
    return page;
}

const withoutSheet = () => {
    Object.defineProperty(navigator, 'canShare', {value: undefined});
    Object.defineProperty(navigator, 'clipboard', {value: {
        write: async (items) => {
            window.copied = {text: await (await items[0].getType('text/plain')).text(),
                types: items[0].types, size: (await items[0].getType('image/png')).size};
        },
        writeText: async (text) => { window.copiedText = text; },
    }});
    window.followed = [];
    const click = HTMLAnchorElement.prototype.click;
    HTMLAnchorElement.prototype.click = function() {
        if (this.protocol === 'mailto:') window.followed.push(this.href);
        else click.call(this);
    };
};

const linkOf = (page) => page.url();

test('phone: the browser\'s own sheet gets the file, the text and the link', async (t) => {
    const page = await openWith(t, phone, () => {
        window.answers = ['AbortError', 'NotAllowedError'];
        Object.defineProperty(navigator, 'canShare', {value: () => true});
        Object.defineProperty(navigator, 'share', {value: async ({files: [file], ...data}) => {
            const start = [...new Uint8Array(await file.slice(1, 4).arrayBuffer())];
            window.shared = {...data, name: file.name, type: file.type,
                start: String.fromCharCode(...start), active: navigator.userActivation.isActive};
            const name = window.answers.shift();
            if (name) throw new DOMException('', name);
        }});
    });
    await tap(page, button(page, 'Share'));
    const data = await (await page.waitForFunction(() => window.shared, null, {timeout: patience})).jsonValue();
    assert.deepEqual(data, {title: 'Discovered in Zentaro', text: 'Discovered in Zentaro: ', url: linkOf(page),
        name: `Zentaro${new URL(linkOf(page)).pathname.replaceAll('/', ' ')}.png`, type: 'image/png', start: 'PNG',
        active: true});
    assert.equal(await button(page, 'Copy').count(), 0, 'closed by the user: nothing is left');
    await tap(page, button(page, 'Share'));
    await button(page, 'Copy').waitFor({state: 'attached', timeout: patience});
    assert.ok(await page.getByText('The browser does not share this.').count(), 'refused: our sheet, and why');
});

for (const [place, device] of Object.entries({phone, tablet, desktop})) {
    test(`${place}: our sheet copies, downloads and mails`, async (t) => {
        const page = await openWith(t, device, withoutSheet);
        const open = async () => {
            await press(page, 'Share');
            await button(page, 'Copy').waitFor({state: 'attached', timeout: patience});
        };
        const isGone = () => button(page, 'Copy').waitFor({state: 'detached', timeout: patience});
        const text = `Discovered in Zentaro: ${linkOf(page)}`;

        await open();
        await page.waitForTimeout(600);
        await keepPicture(page, `share-${place}`);
        await press(page, 'Copy');
        const copied = await (await page.waitForFunction(() => window.copied)).jsonValue();
        assert.equal(copied.text, text);
        assert.deepEqual(copied.types, ['text/plain', 'image/png']);
        await isGone();

        await open();
        const [file] = await Promise.all([page.waitForEvent('download', {timeout: patience}), press(page, 'Download')]);
        assert.match(file.suggestedFilename(), /^Zentaro julia( -?\d\.\d{6}){4}\.png$/);
        const bytes = readFileSync(await file.path());
        assert.ok(bytes.subarray(1, 4).equals(Buffer.from('PNG')));
        assert.ok(bytes.includes(linkOf(page)), 'the link is in the file');
        await isGone();

        await open();
        await press(page, 'Mail');
        await page.waitForFunction(() => window.followed.length > 0);
        const mail = new URL((await page.evaluate(() => window.followed))[0]);
        assert.equal(mail.searchParams.get('subject'), 'Discovered in Zentaro');
        assert.equal(mail.searchParams.get('body'), text);
        await isGone();

        if (device !== desktop) return;
        await page.goto(shared.url);
        await untilView(page, (view) => view.height > 2, 'the whole of it');
        await page.evaluate((content) => {
            const dataTransfer = new DataTransfer();
            dataTransfer.items.add(new File([new Uint8Array(content)], 'downloaded.png'));
            document.body.dispatchEvent(new DragEvent('drop', {dataTransfer, bubbles: true, cancelable: true}));
        }, [...bytes]);
        await untilView(page, (view) => view.type === 'julia' && Math.abs(view.x + 1) < 0.01 && Math.abs(view.y) < 0.01,
            'the view of the downloaded picture, dropped back');
    });
}
