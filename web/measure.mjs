// @ts-check
/**
 * Milliseconds of each stage in Chromium, and what the page finds.
 * usage: node measure.mjs [--runs N] [--link '#stages=...'] PHOTOGRAPH...
 *        the least of N runs of each stage, 15 by default, with the settings of a link of the page
 */
import { basename } from 'node:path';
import { launched, served, visited } from './test/browser/site.mjs';

const words = process.argv.slice(2);
/** @param {string} name @param {string} otherwise */
const option = (name, otherwise) =>
    words.includes(name) ? (words.splice(words.indexOf(name), 2)[1] ?? otherwise) : otherwise;
const runs = Number(option('--runs', '15'));
const link = option('--link', '');
const [site, browser] = [await served(), await launched()];

/** @param {import('playwright-core').Page} page @returns {Promise<[string, string][]>} */
const measured = (page) =>
    page
        .locator('#measured > div')
        .evaluateAll((rows) =>
            rows.map((row) => [row.children[0]?.textContent ?? '', row.children[1]?.textContent ?? '']),
        );

/** @param {import('playwright-core').Page} page @returns {Promise<[string, number][]>} */
const times = (page) =>
    page
        .locator('#times li')
        .evaluateAll((rows) =>
            rows.map((row) => [row.children[0]?.textContent ?? '', Number(row.children[2]?.textContent)]),
        );

for (const photograph of words) {
    const { page, context } = await visited(browser, site.address + link);
    /** @type {Map<string, number>} */
    const least = new Map();
    for (let run = 0; run < runs; ++run) {
        await page.setInputFiles('#file', photograph); // a photograph opened anew is computed anew
        await page.waitForFunction(() => document.body.dataset['settled'] === 'true');
        for (const [stage, time] of await times(page))
            least.set(stage, Math.min(time, least.get(stage) ?? Infinity));
    }
    console.log(basename(photograph));
    console.log(`  ${(await measured(page)).map(([label, text]) => `${label} ${text}`).join(', ')}`);
    console.log(`  ${[...least].map(([stage, time]) => `${stage} ${time.toFixed(1)}`).join(', ')}`);
    const load = await page.evaluate(() =>
        performance.getEntriesByName('library loaded')[0]?.duration.toFixed(0),
    );
    console.log(`  library loaded in ${load} ms`);
    await context.close();
}
await browser.close();
await site.close();
