import assert from 'node:assert/strict';
import { readFileSync } from 'node:fs';
import { test } from 'node:test';
import { cutOff, refusal } from '../../src/worker/header.js';

const sample = new Uint8Array(readFileSync(new URL('../../../../../samples/page.jpg', import.meta.url)));

function png(cols: number, rows: number): Uint8Array {
    const bytes = new Uint8Array(33);
    bytes.set([0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a, 0, 0, 0, 13, 0x49, 0x48, 0x44, 0x52]);
    new DataView(bytes.buffer).setUint32(16, cols);
    new DataView(bytes.buffer).setUint32(20, rows);
    return bytes;
}

/** A JPEG that is nothing but its header. */
const jpeg = (cols: number, rows: number): Uint8Array =>
    new Uint8Array([
        0xff,
        0xd8,
        0xff,
        0xe0,
        0,
        4,
        1,
        2,
        0xff,
        0xff,
        0xc2,
        0,
        11,
        8,
        rows >> 8,
        rows & 255,
        cols >> 8,
        cols & 255,
        3,
    ]);

test('a photograph passes', () => {
    assert.equal(refusal(sample), null);
    assert.equal(cutOff(sample), false);
});

test('what follows the end of a JPEG does not matter', () => {
    const longer = new Uint8Array(sample.length + 100);
    longer.set(sample);
    assert.equal(cutOff(longer), false);
});

test('a JPEG without its end is cut off, wherever it was cut', () => {
    for (const length of [sample.length - 1, sample.length >> 1, 700, 3])
        assert.equal(cutOff(sample.subarray(0, length)), true);
});

test('extents beyond the limit are refused by name', () => {
    const words = '30000 × 30000 pixels are more than the 64 megapixels that this page takes';
    assert.equal(refusal(png(30000, 30000)), words);
    assert.equal(refusal(jpeg(30000, 30000)), words);
    assert.equal(refusal(png(8000, 8000)), null);
    assert.equal(refusal(jpeg(8000, 8000)), null);
    assert.match(refusal(png(8000, 8001))!, /^8000 × 8001/);
});

test('other files are for the browser to judge, empty ones and bare JPEG marks are not', () => {
    assert.equal(refusal(new TextEncoder().encode('a letter')), null);
    assert.equal(refusal(new Uint8Array()), 'the file is empty');
    assert.equal(refusal(new Uint8Array([0xff, 0xd8])), 'the JPEG has no picture in it');
});
