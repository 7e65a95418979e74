// @ts-check
/**
 * The picture of the page in docs/images. It names, in its bytes, the sources that decide on how the page looks.
 * usage: node picture.mjs [--check]   writes nothing; exit code 1 when the picture was made from other sources
 */
import { createHash } from 'node:crypto';
import { readdirSync, readFileSync, writeFileSync } from 'node:fs';
import { launched, served, visited } from './test/browser/site.mjs';

const PICTURE = new URL('../docs/images/playground.jpg', import.meta.url);
const SOURCES = [
    'index.html',
    'src/pipeline/stages.ts',
    '../samples/page.jpg',
    ...inFolder('src/style/'),
    ...inFolder('src/page/'),
];

/** @param {string} folder */
function inFolder(folder) {
    return readdirSync(new URL(folder, import.meta.url)).map((name) => folder + name);
}

function sourcesNow() {
    const hash = createHash('sha256');
    for (const name of SOURCES.sort()) hash.update(readFileSync(new URL(name, import.meta.url)));
    return `made from ${hash.digest('hex')}`;
}

/** A JPEG with a comment behind its first mark. @param {Buffer} jpeg @param {string} text */
function commented(jpeg, text) {
    const comment = Buffer.from(text);
    const head = Buffer.from([0xff, 0xfe, 0, comment.length + 2]);
    return Buffer.concat([jpeg.subarray(0, 2), head, comment, jpeg.subarray(2)]);
}

if (process.argv.includes('--check')) {
    if (!readFileSync(PICTURE).subarray(0, 200).includes(sourcesNow())) {
        console.error('docs/images/playground.jpg was made from other sources: scripts/web picture');
        process.exit(1);
    }
} else {
    const [site, browser] = [await served(), await launched()];
    const { page } = await visited(browser, site.address, { viewport: { width: 1280, height: 800 } });
    writeFileSync(PICTURE, commented(await page.screenshot({ type: 'jpeg', quality: 82 }), sourcesNow()));
    await browser.close();
    await site.close();
}
