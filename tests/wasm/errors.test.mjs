// Errors of the library, of arguments, and of memory; and what is printed.
import assert from 'node:assert/strict';
import { test } from 'node:test';
import { Image, load, OrvexError } from '../../build/wasm/package/index.js';
import { filled, noise } from './images.mjs';

const orvex = await load();
const identity = Float32Array.of(1, 0, 0, 0, 1, 0);

function thrown(call) {
    try {
        call();
    } catch (error) {
        return error;
    }
    return assert.fail('nothing was thrown');
}

/** The lines of a call, whose times are taken out. */
function linesOf(call) {
    const seen = [];
    orvex.onLines = (lines) =>
        seen.push(lines.map((line) => line.replace(/:\d+\]/, ':#]').replace(/[\d.]+ms/, '#ms')));
    try {
        call();
    } catch {
        // its lines count
    } finally {
        orvex.onLines = null;
    }
    return seen;
}

test('a failed check is code 1 and says which', () => {
    const error = thrown(() => orvex.otsu(noise(4, 4, 3)));
    assert.ok(error instanceof OrvexError && error instanceof Error);
    assert.deepEqual([error.name, error.code, error.reason], ['OrvexError', 1, '']);
    assert.equal(error.message, 'input error 1 == src.channels');
    assert.equal(error.lines.length, 3);
    assert.match(error.lines[1], /^\[warn\]file: jni\/orvex_991\/cv_imgproc.cpp, line: \d+, function: otsu$/);
});

test('what the library says is the message', () => {
    const format = thrown(() => orvex.threshold(noise(4, 4, 1), 0, 255, 1));
    assert.deepEqual([format.code, format.message], [1, 'only support otsu binary mode']);
    const photo = filled(200, 200, 3, 200);
    for (let k = 0; k < 12; ++k) photo.data.set([0, 0, 255], 3 * (200 * 5 + 5 + k));
    const seal = thrown(() => orvex.redColorDetect(photo));
    assert.deepEqual([seal.code, seal.message], [2, 'could not find any valid red circle']);
});

test('codes 2, 3 and 4', () => {
    assert.equal(thrown(() => orvex.connectdComponent(noise(4, 4, 3))).code, 2);
    const labels = thrown(() => orvex.bwlabel(new Image(2, 2, 1, Uint8Array.of(0, 255, 255, 255))));
    assert.deepEqual([labels.code, labels.message], [4, 'out of range']);
    const large = { width: 46340, height: 46340 };
    const memory = thrown(() => orvex.warpAffine(noise(2, 2, 1), identity, large));
    assert.ok(memory instanceof OrvexError);
    assert.equal(memory.code, 3);
    assert.equal(
        thrown(() =>
            orvex.warpAffine(noise(2, 2, 1), identity, { width: 8, height: 8 }, 0, new Image(1, 1, 1)),
        ).code,
        3,
    );
    assert.equal(thrown(() => orvex.warpAffine(noise(2, 2, 1), identity, { width: -8, height: 8 })).code, 3);
});

test('an error leaves nothing behind', () => {
    thrown(() => orvex.threshold(noise(4, 4, 1), 0, 255, 1));
    assert.equal(thrown(() => orvex.otsu(noise(4, 4, 3))).reason, '');
    assert.equal(orvex.otsu(new Image(3, 3, 1)), 0);
});

test('arguments of another type', () => {
    const gray = noise(3, 3, 1);
    const wrong = [
        [() => orvex.bgr2gray(), 'src must be an image {rows, cols, channels, data: Uint8Array}'],
        [() => orvex.bgr2gray(gray.data), 'src must be an image {rows, cols, channels, data: Uint8Array}'],
        [() => orvex.otsu(gray, 3), 'mask must be an image {rows, cols, channels, data: Uint8Array}'],
        [() => orvex.dilateBinary(gray, 3), 'size must be a size {width, height}'],
        [() => orvex.thresholdSeg(gray, '128'), 'threshold must be a number'],
        [() => orvex.adaptiveThreshold(gray, 3, 0, 1), 'inverse must be true or false'],
        [() => orvex.rectAffine({ x: 1, y: 1 }, identity), 'src must be a rectangle {x, y, width, height}'],
        [
            () => orvex.warpAffine(gray, [...identity], { width: 1, height: 1 }),
            'trans_matrix must be a Float32Array of 6 numbers, row by row',
        ],
        [() => orvex.convexHull([{ x: 1, y: 1 }, null]), 'points[1] must be a point {x, y}'],
        [() => orvex.yuv2bgr([1], 1, 1), 'yuv must be a Uint8Array'],
        [
            () => orvex.getRotatedRectAngle({}),
            'rotate_rect must be a rotated rectangle {pts, center, width, height, angle}',
        ],
    ];
    for (const [call, message] of wrong) {
        const error = thrown(call);
        assert.ok(error instanceof TypeError, `${error}`);
        assert.equal(error.message, message);
    }
});

test('arguments that do not fit', () => {
    const gray = noise(3, 3, 1);
    const wrong = [
        [() => orvex.thresholdSeg(gray, 0.5), 'threshold is 0.5: it must be a whole number of 32 bits'],
        [() => orvex.thresholdSeg(gray, NaN), 'threshold is NaN: it must be a whole number of 32 bits'],
        [
            () => orvex.thresholdSeg(gray, 2 ** 31),
            'threshold is 2147483648: it must be a whole number of 32 bits',
        ],
        [
            () => orvex.dilateBinary(gray, { width: 1, height: 1e10 }),
            'size.height is 10000000000: it must be a whole number of 32 bits',
        ],
        [
            () => orvex.otsu(new Image(3, 3, 1, new Uint8Array(8))),
            'src of 3 x 3 x 1 needs 9 bytes of data, not 8',
        ],
        [
            () => orvex.otsu(new Image(-3, 3, 1, new Uint8Array(9))),
            'src has extents -3 x 3 x 1: they must be whole numbers from 0 on',
        ],
        [
            () => orvex.otsu({ rows: 65536, cols: 65536, channels: 0, data: new Uint8Array() }),
            'src of 65536 x 65536 x 0 is larger than any image of the library',
        ],
        [() => orvex.yuv2bgr(new Uint8Array(5), 2, 2), 'yuv of 2 x 2 pixels needs 6 bytes, not 5'],
        [() => orvex.yuv2bgr(new Uint8Array(5), -2, 2), 'a frame of -2 x 2 pixels: extents begin at 0'],
    ];
    for (const [call, message] of wrong) {
        const error = thrown(call);
        assert.ok(error instanceof RangeError, `${error}`);
        assert.equal(error.message, message);
    }
});

test('lines are handed over call by call, also of one that fails', () => {
    assert.deepEqual(
        linesOf(() => orvex.bgr2gray(noise(3, 3, 3))),
        [['D cv_imgproc.cpp:#] bgr2gray cost time: #ms']],
    );
    assert.deepEqual(
        linesOf(() => orvex.otsu(noise(3, 3, 1))),
        [],
    );
    const [failed] = linesOf(() => orvex.otsu(noise(3, 3, 3)));
    assert.equal(failed[0], 'D cv_imgproc.cpp:#] [warn] input error 1 == src.channels ');
    const [sharp] = linesOf(() => orvex.getSharpness(noise(40, 40, 1)));
    assert.match(sharp.at(-1), /^D cv_imgproc.cpp:#\] sharpness: /);
});

test('lines are dropped without a taker, and each object has its own', async () => {
    orvex.bgr2gray(noise(3, 3, 3));
    assert.equal(linesOf(() => orvex.bgr2gray(noise(3, 3, 3)))[0].length, 1);
    const other = await load();
    assert.deepEqual(
        linesOf(() => other.bgr2gray(noise(3, 3, 3))),
        [],
    );
});

test('a taker of lines may call operations', () => {
    let level;
    orvex.onLines = () => {
        orvex.onLines = null;
        level = orvex.otsu(noise(5, 5, 1));
    };
    orvex.bgr2gray(noise(3, 3, 3));
    assert.equal(level, orvex.otsu(noise(5, 5, 1)));
});
