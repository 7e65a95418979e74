// @ts-check
/** What a visitor does: opening, moving sliders, mistakes, keys. */
import assert from 'node:assert/strict';
import { readFileSync, writeFileSync } from 'node:fs';
import { basename, join } from 'node:path';
import { after, before, test } from 'node:test';
import { setTimeout as sleep } from 'node:timers/promises';
import { deflateSync } from 'node:zlib';
import { docprep, folder, SAMPLE } from './docprep.mjs';
import { launched, served, settled, visited } from './site.mjs';

/** @typedef {import('playwright-core').Page} Page */

const files = folder();
const small = join(files, 'small.png');
/** @type {Awaited<ReturnType<typeof served>>} */
let site;
/** @type {import('playwright-core').Browser} */
let browser;

before(async () => {
    docprep('op', 'resize-scale', SAMPLE, '--scale', '0.35', '-o', small);
    [site, browser] = [await served(), await launched()];
});
after(async () => {
    await browser.close();
    await site.close();
});

/** @param {string} [hash] */
const visit = (hash = '') => visited(browser, site.address + hash);

/** @param {Page} page @param {string} file */
async function open(page, file) {
    await page.setInputFiles('#file', file);
    await page.waitForFunction(() => document.body.dataset.settled === 'true');
}

/** @param {Page} page @param {string} label */
const measured = (page, label) =>
    page.locator('#measured div', { hasText: label }).locator('dd').first().textContent();

/** @param {Page} page @param {string} words */
const complained = (page, words) => page.locator('#alert', { hasText: words }).waitFor();

/** Half a minute at most; what follows says what was wrong. @param {() => boolean} holds */
async function until(holds) {
    for (let tries = 0; tries < 3000 && !holds(); ++tries) await sleep(10);
}

test('the sample is there at once, and nothing is asked of anybody else', async () => {
    const { page, context, complaints, requests } = await visit();
    assert.equal(await measured(page, 'Photograph'), '1600 × 1200');
    assert.ok(Number(await measured(page, 'Rows')) > 10);
    assert.deepEqual(complaints, []);
    for (const request of requests) assert.ok(request.startsWith(site.address), request);
    assert.equal(requests.filter((request) => request.endsWith('.wasm')).length, 1);
    await context.close();
});

test('a photograph can be dropped', async () => {
    const { page, context, complaints } = await visit();
    const bytes = readFileSync(small).toString('base64');
    await page.evaluate((text) => {
        const data = Uint8Array.from(atob(text), (letter) => letter.charCodeAt(0));
        const transfer = new DataTransfer();
        transfer.items.add(new File([data], 'dropped.png', { type: 'image/png' }));
        document.body.dispatchEvent(new DragEvent('dragenter', { dataTransfer: transfer, bubbles: true }));
        document.body.dispatchEvent(
            new DragEvent('drop', { dataTransfer: transfer, bubbles: true, cancelable: true }),
        );
    }, bytes);
    await page.locator('#canvas[aria-label^="dropped.png"]').waitFor();
    assert.equal(await measured(page, 'Photograph'), '560 × 420');
    assert.equal(await page.locator('body.dropping').count(), 0);
    assert.deepEqual(complaints, []);
    await context.close();
});

test('a photograph comes from the camera', async () => {
    const { page, context } = await visit();
    await page.click('#camera');
    await page.locator('#shoot:not(:disabled)').click();
    await page.locator('#canvas[aria-label^="camera.png"]').waitFor();
    assert.match((await measured(page, 'Photograph')) ?? '', /^\d+ × \d+$/);
    await context.close();
});

test('a moved slider computes what it touches and nothing else', async () => {
    const { page, context } = await visit();
    const rows = Number(await measured(page, 'Rows'));
    const foreground = await measured(page, 'Foreground');
    await page.locator('#binarise-block').fill('15');
    await settled(page);
    assert.notEqual(await measured(page, 'Foreground'), foreground);
    const kept = ['Red seal', 'Gray', 'Sharpness', 'Deskew'].map((title) => `${title} (from before)`);
    assert.deepEqual(await page.locator('#times .kept > span:first-child').allTextContents(), kept);
    await page.locator('#components-least').fill('60');
    await settled(page);
    assert.equal(await page.locator('#times .kept').count(), 5);
    assert.ok(Number(await measured(page, 'Rows')) < rows);
    await context.close();
});

test('of a slider on its way only the newest position counts', async () => {
    const { page, context } = await visit();
    await page.evaluate(() => {
        const range = /** @type {HTMLInputElement} */ (document.getElementById('binarise-ratio'));
        for (let k = -40; k <= 0; ++k) {
            range.value = String(k / 20);
            range.dispatchEvent(new Event('input'));
        }
    });
    await settled(page);
    const swept = await measured(page, 'Foreground');
    const other = await visit('#binarise.ratio=0');
    assert.equal(swept, await measured(other.page, 'Foreground'));
    await other.context.close();
    await context.close();
});

test('an operation that refuses says why in its own words, at its stage and aloud', async () => {
    const { page, context } = await visit();
    await page.click('label[for=on-gray]');
    await settled(page);
    assert.match((await page.textContent('[data-stage=binarise] .note')) ?? '', /1 == src\.channels/);
    assert.match((await page.textContent('#status')) ?? '', /Threshold: .*1 == src\.channels.* \(code 1\)/);
    assert.equal(await page.textContent('[data-stage=rows] .note'), 'Not reached.');
    await page.click('label[for=on-gray]');
    await settled(page);
    assert.equal(await page.locator('.failed').count(), 0);
    await context.close();
});

/** @param {string} name @param {Uint8Array | string} content */
function file(name, content) {
    const path = join(files, name);
    writeFileSync(path, content);
    return path;
}

/** A PNG whose header promises more than it has. @param {number} cols @param {number} rows */
function pngOf(cols, rows) {
    const header = Buffer.alloc(25);
    header.writeUInt32BE(13, 0);
    header.write('IHDR', 4);
    header.writeUInt32BE(cols, 8);
    header.writeUInt32BE(rows, 12);
    header.set([8, 0, 0, 0, 0], 16);
    const data = deflateSync(Buffer.alloc(1));
    return Buffer.concat([
        Buffer.from('89504e470d0a1a0a', 'hex'),
        header,
        Buffer.from([0, 0, 0, data.length]),
        Buffer.from('IDAT'),
        data,
    ]);
}

test('files that are no photographs are refused in one line, and the one before stays', async () => {
    const { page, context } = await visit();
    const sample = readFileSync(SAMPLE);
    for (const [path, words] of [
        [
            file('letter.txt', 'Dear friends at the harbour school'),
            'it is not a picture that this browser can read',
        ],
        [
            file('letter.jpg', 'Dear friends at the harbour school'),
            'it is not a picture that this browser can read',
        ],
        [file('empty.png', ''), 'the file is empty'],
        [file('cut.jpg', sample.subarray(0, sample.length >> 1)), 'the JPEG is cut off'],
        [file('huge.png', pngOf(30000, 30000)), '30000 × 30000 pixels are more than the 64 megapixels'],
        [file('broken.png', pngOf(300, 300)), 'it is not a picture that this browser can read'],
    ]) {
        await page.setInputFiles('#file', path);
        await complained(page, `${basename(path)}: ${words}`);
        await settled(page);
        assert.equal(await measured(page, 'Photograph'), '1600 × 1200');
    }
    await open(page, small);
    await page.locator('#alert[hidden]').waitFor({ state: 'attached' });
    await context.close();
});

test('a worker that breaks is started again, says so, and goes on with the same photograph', async () => {
    const { page, context } = await visit('#binarise.block=31');
    await open(page, small);
    const rows = await measured(page, 'Rows');
    await page.workers()[0]?.evaluate(
        () =>
            void setTimeout(() => {
                throw new Error('a planted failure');
            }),
    );
    await complained(page, 'The worker stopped');
    await page.locator('#alert', { hasText: 'a planted failure. It was started again.' }).waitFor();
    await settled(page);
    await page.locator('#components-least').fill('3');
    await settled(page);
    await page.locator('#components-least').fill('5');
    await settled(page);
    assert.equal(await measured(page, 'Photograph'), '560 × 420');
    assert.equal(await measured(page, 'Rows'), rows);
    await context.close();
});

test('a library that cannot be loaded is tried three times, and again when something changes', async () => {
    const context = await browser.newContext();
    const page = await context.newPage();
    let asked = 0;
    /** @type {() => void} */
    let sampleCame = () => {};
    const sample = new Promise((resolve) => (sampleCame = () => resolve(undefined)));
    // The sample comes when the first try has failed and before the second one has.
    await context.route('**/*.jpg', async (route) => {
        await until(() => asked > 0);
        await sleep(100);
        await route.continue();
        sampleCame();
    });
    await context.route('**/*.wasm', async (route) => {
        const which = ++asked;
        if (which === 2) await sample.then(() => sleep(300));
        return which <= 3 ? route.abort() : route.continue();
    });
    await page.goto(site.address);
    await until(() => asked >= 3);
    await complained(page, 'It is started again as soon as something changes.');
    assert.equal(asked, 3);
    await page.click('label[for=on-seal]');
    await page.locator('#measured div', { hasText: 'Rows' }).waitFor();
    assert.equal(asked, 4);
    await context.close();
});

test('a link brings back order, switches and values', async () => {
    const { page, context } = await visit();
    await page.click('[data-stage=deskew] button[aria-label="Move Deskew up"]');
    await page.check('#binarise-method-otsu');
    await page.click('label[for=on-seal]');
    await page.locator('#components-most').fill('8');
    await settled(page);
    await page.waitForURL(/components\.most=8/);
    const found = await page.locator('#measured').textContent();
    const other = await visited(browser, page.url());
    assert.equal(await other.page.locator('#measured').textContent(), found);
    assert.deepEqual(
        await other.page
            .locator('[data-stage]')
            .evaluateAll((items) => items.map((item) => item.getAttribute('data-stage'))),
        await page
            .locator('[data-stage]')
            .evaluateAll((items) => items.map((item) => item.getAttribute('data-stage'))),
    );
    assert.ok(await other.page.isChecked('#binarise-method-otsu'));
    await other.page.click('#reset');
    await settled(other.page);
    assert.ok(await other.page.isChecked('#on-seal'));
    assert.equal(new URL(other.page.url()).hash, '');
    await other.context.close();
    await context.close();
});

test('a link that says nonsense is read as far as it makes sense', async () => {
    const { page, context } = await visit('#stages=none&binarise.block=1e9');
    await complained(page, 'The link: no stage, or one named twice: none');
    assert.equal(await page.inputValue('#binarise-block'), '401');
    await context.close();
});

test('everything is done by keys alone', async () => {
    const { page, context } = await visit();
    /** @param {string} id */
    const reach = async (id) => {
        for (let k = 0; k < 120; ++k) {
            if ((await page.evaluate(() => document.activeElement?.id)) === id) return;
            await page.keyboard.press('Tab');
        }
        assert.fail(`Tab does not lead to #${id}`);
    };
    await reach('on-turn');
    await page.keyboard.press('Space');
    await settled(page);
    assert.equal(await measured(page, 'Result'), '1200 × 1600');
    await reach('turn-quarters-1');
    await page.keyboard.press('ArrowRight');
    await settled(page);
    assert.equal(await measured(page, 'Result'), '1600 × 1200');
    await reach('binarise-block');
    await page.keyboard.press('ArrowLeft');
    await settled(page);
    assert.equal(await page.inputValue('#binarise-block'), '79');
    await reach('viewer');
    const before = await page.textContent('#zoom');
    await page.keyboard.press('+');
    await page.waitForFunction((text) => document.getElementById('zoom')?.textContent !== text, before);
    await page.keyboard.press('0');
    await page.waitForFunction((text) => document.getElementById('zoom')?.textContent === text, before);
    await page.keyboard.press('1');
    await page.waitForFunction(() => document.getElementById('zoom')?.textContent === '100 %');
    await reach('divider');
    await page.keyboard.press('Home');
    assert.equal(await page.getAttribute('#divider', 'aria-valuenow'), '0');
    await reach('take-cpp');
    await page.keyboard.press('Enter');
    assert.ok(await page.locator('#code[open]').isVisible());
    await page.keyboard.press('Escape');
    assert.equal(await page.locator('#code[open]').count(), 0);
    assert.equal(await page.evaluate(() => document.activeElement?.id), 'take-cpp');
    await context.close();
});

test('a moved stage keeps the focus', async () => {
    const { page, context } = await visit();
    const up = page.locator('[aria-label="Move Turn up"]');
    await up.focus();
    await page.keyboard.press('Enter');
    assert.equal(await page.locator('[data-stage]').first().getAttribute('data-stage'), 'turn');
    assert.equal(
        await page.evaluate(() => document.activeElement?.getAttribute('aria-label')),
        'Move Turn down',
    );
    await context.close();
});

test('wheel and drag move original and result together', async () => {
    const { page, context } = await visit();
    await open(page, small);
    await page.click('#exact');
    const box = await page.locator('#canvas').boundingBox();
    assert.ok(box);
    await page.mouse.move(box.x + 100, box.y + 100);
    await page.mouse.wheel(0, -200);
    await page.waitForFunction(() => parseInt(document.getElementById('zoom')?.textContent ?? '0', 10) > 150);
    await page.mouse.down();
    await page.mouse.move(box.x + 160, box.y + 130);
    await page.mouse.up();
    const divider = await page.locator('#divider').boundingBox();
    assert.ok(divider);
    await page.mouse.move(divider.x + 14, divider.y + 50);
    await page.mouse.down();
    await page.mouse.move(box.x + box.width / 4, divider.y + 50);
    await page.mouse.up();
    assert.equal(await page.getAttribute('#divider', 'aria-valuenow'), '25');
    await context.close();
});

test('12 megapixels work', async () => {
    const large = join(files, 'large.jpg');
    docprep('op', 'resize', SAMPLE, '--out-size', '4000x3000', '-o', large);
    const { page, context, complaints } = await visit();
    await open(page, large);
    await page.locator('#canvas[aria-label^="large.jpg"]').waitFor();
    assert.equal(await measured(page, 'Photograph'), '4000 × 3000');
    assert.deepEqual(complaints, []);
    await context.close();
});
