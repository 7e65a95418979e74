// What goes in and comes out: images, points, lists; on both builds.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Image, INTERP_LINEAR, load } from '../../build/wasm/package/index.js';
import { filled, noise, page } from './images.mjs';

const orvex = await load();
const plain = await load({ simd: false });

test('white becomes 253', () => {
    const gray = orvex.bgr2gray(filled(2, 3, 3, 255));
    assert.deepEqual([gray.rows, gray.cols, gray.channels, [...gray.data]], [2, 3, 1, Array(6).fill(253)]);
});

test("arguments are not written and results are the caller's", () => {
    const src = noise(20, 30, 1);
    const before = src.data.slice();
    const first = orvex.thresholdSeg(src, 128);
    const kept = first.data.slice();
    orvex.thresholdSeg(noise(20, 30, 1, 2), 30);
    assert.deepEqual(src.data, before);
    assert.deepEqual(first.data, kept);
    assert.notEqual(first.data.buffer, src.data.buffer);
    assert.equal(first.data.byteLength, first.data.buffer.byteLength);
});

test('a part of a larger array is an image, too', () => {
    const all = noise(4, 10, 1).data;
    const upper = new Image(2, 10, 1, all.subarray(20));
    assert.deepEqual(orvex.flipLR(orvex.flipLR(upper)).data, all.slice(20));
    assert.equal(
        orvex.otsu({ rows: 2, cols: 10, channels: 1, data: Buffer.from(all.subarray(20)) }),
        orvex.otsu(upper),
    );
});

test('an image without pixels is an image', () => {
    const none = orvex.bgr2gray(new Image(0, 5, 3));
    assert.equal(none.data.length, 0);
    assert.equal(orvex.otsu(new Image(0, 0, 1)), 0);
});

test('pixels of a canvas become B, G, R and come back opaque', () => {
    const rgba = Uint8ClampedArray.from([10, 20, 30, 40, 50, 60, 70, 80]);
    const image = Image.fromImageData({ width: 2, height: 1, data: rgba });
    assert.deepEqual([image.rows, image.cols, image.channels], [1, 2, 3]);
    assert.deepEqual([...image.data], [30, 20, 10, 70, 60, 50]);
    assert.deepEqual([...Image.toRgba(image)], [10, 20, 30, 255, 50, 60, 70, 255]);
    assert.deepEqual([...Image.toRgba(new Image(1, 1, 1, Uint8Array.of(7)))], [7, 7, 7, 255]);
    assert.throws(() => Image.toRgba(new Image(1, 1, 2)), RangeError);
});

test('several results have the names of the header', () => {
    const binary = orvex.thresholdSeg(noise(12, 12, 1), 200);
    const { dst, num } = orvex.bwlabel(binary);
    assert.ok(dst.data instanceof Int32Array);
    assert.equal(Math.max(...dst.data), num);
    const { threshold, dst: inverted } = orvex.threshold(noise(9, 9, 1), 0, 255, 8 | 1);
    assert.equal(threshold, orvex.otsu(noise(9, 9, 1)));
    assert.deepEqual(new Set(inverted.data), new Set([0, 255]));
    const marked = orvex.warpAffine(
        binary,
        Float32Array.of(1, 0, 0, 0, 1, 0),
        { width: 12, height: 12 },
        INTERP_LINEAR,
        new Image(12, 12, 1),
    );
    assert.equal(marked.mask.data.filter((byte) => byte === 1).length, 11 * 11);
    assert.deepEqual(marked.dst.data, binary.data);
});

test('components come with their pixels', () => {
    const binary = new Image(5, 7, 1);
    for (const at of [8, 9, 15, 26]) binary.data[at] = 255;
    assert.deepEqual(orvex.connectdComponent(binary), [
        { x: 1, y: 1, width: 2, height: 2 },
        { x: 5, y: 3, width: 1, height: 1 },
    ]);
    assert.deepEqual(orvex.connectdComponent(binary, true).points, [
        [
            { x: 1, y: 1 },
            { x: 2, y: 1 },
            { x: 1, y: 2 },
        ],
        [{ x: 5, y: 3 }],
    ]);
});

test('shapes of points', () => {
    const points = [
        { x: 0, y: 0 },
        { x: 4, y: 0 },
        { x: 4, y: 2 },
        { x: 0, y: 2 },
        { x: 1, y: 1 },
    ];
    assert.equal(orvex.convexHull(points).length, 4);
    const { center, width, height } = orvex.minAreaRect(points);
    assert.deepEqual({ center, width, height }, { center: { x: 2, y: 1 }, width: 4, height: 2 });
    assert.deepEqual(orvex.minAreaRect([]).pts, []);
});

test('a page is levelled', () => {
    const straight = page();
    const turned = orvex.levelPage(straight, -4);
    const skew = orvex.estimateSkew(orvex.thresholdSeg(turned, 128)); // the white around touches the border
    assert.ok(Math.abs(skew - 4) < 0.1, `${skew}`);
    const level = orvex.levelPage(turned, skew);
    assert.ok(Math.abs(orvex.estimateSkew(orvex.thresholdSeg(level, 128))) < 0.1);
    assert.deepEqual(orvex.levelPage(straight, 0.05), straight);
});

test('both builds do the same to the bit', () => {
    const photo = noise(67, 131, 3);
    const gray = noise(67, 131, 1);
    const size = { width: 5, height: 3 };
    const calls = [
        (o) => o.bgr2gray(photo),
        (o) => o.bgr2hsv(photo),
        (o) => o.equalizeHist(gray),
        (o) => o.hist(gray),
        (o) => o.adaptiveThreshold(gray, 31, 0.1),
        (o) => o.rot90ClockWise(photo, 1),
        (o) => o.resize(photo, 1.7),
        (o) => o.levelPage(photo, 7),
        (o) => o.dilateBinary(gray, size),
        (o) => o.erodeGray(gray, size),
        (o) => o.connectdComponent(o.thresholdSeg(gray, 128), true),
        (o) => o.estimateSkew(page()),
        (o) => o.saliencyDetect(gray, gray),
        (o) => o.getSharpness(photo),
    ];
    for (const call of calls) assert.deepEqual(call(orvex), call(plain), call.toString());
});
