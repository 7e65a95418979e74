import assert from 'node:assert/strict';
import { test } from 'node:test';
import { load } from 'orvex_991';
import { betweenCorners, combined, inverse, mapped, turned, type Affine } from '../../src/pipeline/affine.js';
import { outlineOf, outlinesByLabel } from '../../src/pipeline/outlines.js';

const orvex = await load();

test('turned places are those of the library', () => {
    const [rows, cols] = [3, 5];
    for (let n = 0; n < 4; ++n)
        for (const f of [0, 1]) {
            const map = turned(n, f === 1, cols, rows);
            for (let at = 0; at < rows * cols; ++at) {
                const picture = { rows, cols, channels: 1, data: new Uint8Array(rows * cols) };
                picture.data[at] = 255;
                const { data, cols: width } = orvex.rot90ClockWise_FlipLR(picture, n, f);
                const to = data.indexOf(255);
                const centre = { x: (at % cols) + 0.5, y: Math.floor(at / cols) + 0.5 };
                assert.deepEqual(mapped(map, centre), {
                    x: (to % width) + 0.5,
                    y: Math.floor(to / width) + 0.5,
                });
            }
        }
});

test('a map and its inverse leave everything where it is', () => {
    const map: Affine = [0.9, -0.3, 12, 0.35, 1.1, -7];
    combined(inverse(map), map).forEach((term, k) =>
        assert.ok(Math.abs(term - [1, 0, 0, 0, 1, 0][k]!) < 1e-12),
    );
});

test('the centre of a pixel is half a pixel from its corner', () => {
    const map: Affine = [0.5, 0.1, 3, -0.1, 0.5, 4];
    const { x, y } = mapped(map, { x: 10, y: 20 });
    const corner = mapped(betweenCorners(map), { x: 10.5, y: 20.5 });
    assert.ok(Math.hypot(corner.x - x - 0.5, corner.y - y - 0.5) < 1e-12);
});

/** 255 with the given probability in percent, the same at every run. */
function speckled(
    rows: number,
    cols: number,
    percent: number,
): { rows: number; cols: number; channels: 1; data: Uint8Array } {
    let state = 991;
    const data = Uint8Array.from({ length: rows * cols }, () => {
        state = (state * 1103515245 + 12345) % 2147483648;
        return state % 1000 < 10 * percent ? 255 : 0;
    });
    return { rows, cols, channels: 1, data };
}

test('the outline of a mask has the hull of all its pixels', () => {
    for (const percent of [0, 1, 30, 100]) {
        const mask = speckled(23, 31, percent);
        const all = [...mask.data.keys()]
            .filter((at) => mask.data[at] !== 0)
            .map((at) => ({ x: at % 31, y: Math.floor(at / 31) }));
        assert.deepEqual(orvex.convexHull(outlineOf(mask)), orvex.convexHull(all));
    }
});

test('outlines by label have the hulls of the components', () => {
    const mask = speckled(40, 37, 40);
    mask.data[0] = 0; // the first pixel has a rule of its own
    const { dst, num } = orvex.bwlabel(mask);
    const { points } = orvex.connectdComponent(mask, true);
    const sorted = (hulls: unknown[]): string[] => hulls.map((hull) => JSON.stringify(hull)).sort();
    assert.deepEqual(
        sorted(outlinesByLabel(dst, num).map((outline) => orvex.convexHull(outline))),
        sorted(points.map((pixels) => orvex.convexHull(pixels))),
    );
});
