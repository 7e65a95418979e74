// The module's memory: it grows for large images, nothing is left behind in it, and what does not fit is an error.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Image, load, OrvexError } from '../../build/wasm/package/index.js';
import { filled, noise } from './images.mjs';

const MEGA = 2 ** 20;

test('memory grows for a photograph of 12 megapixels', async () => {
    const orvex = await load();
    const before = orvex.memorySize;
    const gray = orvex.bgr2gray(filled(3000, 4000, 3, 255));
    assert.equal(gray.data.length, 12e6);
    assert.ok(gray.data.every((byte) => byte === 253));
    assert.ok(before <= 2 * MEGA);
    assert.ok(orvex.memorySize >= 48e6);
});

test('a thousand calls leave nothing behind', async () => {
    const orvex = await load();
    const photo = noise(90, 120, 3);
    const gray = noise(90, 120, 1);
    const calls = [
        () => orvex.bgr2gray(photo),
        () => orvex.hist(gray),
        () => orvex.threshold(gray, 0, 255, 8, gray),
        () =>
            orvex.warpAffine(
                gray,
                orvex.getRotationMatrix2D({ x: 9, y: 9 }, 5, 1),
                { width: 90, height: 90 },
                0,
                gray,
            ),
        () => orvex.bwlabel(orvex.thresholdSeg(gray, 128)),
        () => orvex.connectdComponent(orvex.thresholdSeg(gray, 128), true),
        () => orvex.divideComponentsToRows(orvex.connectdComponent(gray)),
        () => orvex.minAreaRect(orvex.convexHull(orvex.connectdComponent(gray))),
        () => orvex.saliencyDetect(gray, gray),
        () => orvex.levelPage(photo, orvex.estimateSkew(gray)),
        () => assert.throws(() => orvex.otsu(photo), OrvexError),
        () => assert.throws(() => orvex.thresholdSeg(gray, 256), OrvexError),
        () => assert.throws(() => orvex.connectdComponent(photo, true), OrvexError),
        () => assert.throws(() => orvex.threshold(gray, 0, 255, 8, photo.data), TypeError),
    ];
    for (let k = 0; k < 10; ++k) for (const call of calls) call();
    const before = orvex.memorySize;
    for (let k = 0; k < 1000; ++k) calls[k % calls.length]();
    assert.equal(orvex.memorySize, before);
});

test('an image for which there is no memory is code 3, and the next one is well', async () => {
    const orvex = await load();
    // Below the bound of the library, beyond that of the module: nothing of it is ever touched.
    const large = { width: 46340, height: 46340 };
    const identity = Float32Array.of(1, 0, 0, 0, 1, 0);
    for (let k = 0; k < 3; ++k)
        assert.throws(
            () => orvex.warpAffine(new Image(2, 2, 1), identity, large),
            (error) => error.code === 3,
        );
    assert.equal(orvex.bgr2gray(filled(1, 1, 3, 255)).data[0], 253);
});

test('objects have memories of their own', async () => {
    const [one, other] = await Promise.all([load(), load()]);
    one.bgr2gray(filled(1000, 1000, 3, 1));
    assert.ok(one.memorySize > other.memorySize);
    assert.equal(other.bgr2gray(new Image(1, 1, 3)).data[0], 0);
});
