#!/usr/bin/env node
// Milliseconds of operations on a frame through the package: the least processor time of several runs, copies in and out
// included.
// usage: bench.mjs [COLSxROWS]   after scripts/wasm
import { Image, load } from '../../build/wasm/package/index.js';

const RUNS = 21;
const [cols, rows] = (process.argv[2] ?? '1920x1080').split('x').map(Number);
if (!(cols > 0 && rows > 0)) {
    console.error('usage: bench.mjs [COLSxROWS]');
    process.exit(64);
}

/** A page in colours: rows of letters on paper that darkens to the right, with the noise of a camera. */
function photo() {
    const image = new Image(rows, cols, 3);
    let state = 1;
    for (let y = 0, at = 0; y < rows; ++y)
        for (let x = 0; x < cols; ++x) {
            const ink = y % 32 < 14 && x % 14 < 9 && (x * 7 + (y >> 5) * 3) % 5 > 0;
            for (let k = 0; k < 3; ++k) {
                state = (Math.imul(state, 1664525) + 1013904223) >>> 0;
                image.data[at++] = (ink ? 50 : 220 - (60 * x) / cols) + (state >>> 28);
            }
        }
    return image;
}

/** Of the whole process, which has nothing else to do. */
function milliseconds() {
    const { user, system } = process.cpuUsage();
    return (user + system) / 1000;
}

function least(call) {
    let best = Infinity;
    for (let k = 0; k < RUNS; ++k) {
        const begin = milliseconds();
        call();
        best = Math.min(best, milliseconds() - begin);
    }
    return best;
}

const colours = photo();
const [vectors, plain] = await Promise.all([load({ simd: true }), load({ simd: false })]);
const gray = vectors.bgr2gray(colours);
const binary = vectors.threshold(gray, 0, 255, 8 | 1).dst;
const half = { width: cols >> 1, height: rows >> 1 };
const calls = {
    bgr2gray: (orvex) => orvex.bgr2gray(colours),
    otsu: (orvex) => orvex.otsu(gray),
    'adaptiveThreshold 31': (orvex) => orvex.adaptiveThreshold(gray, 31, 0.1),
    'dilateBinary 9': (orvex) => orvex.dilateBinary(binary, { width: 9, height: 9 }),
    connectdComponent: (orvex) => orvex.connectdComponent(binary),
    'resize to half': (orvex) => orvex.resize(colours, half),
    'minVal: copying in alone': (orvex) => orvex.minVal(gray),
    'flipLR 0: copying in and out': (orvex) => orvex.rot90ClockWise(gray, 0),
};
console.log(`${cols} x ${rows}, Node ${process.versions.node}`);
for (const [name, call] of Object.entries(calls)) {
    const times = [vectors, plain].map((orvex) =>
        least(() => call(orvex))
            .toFixed(2)
            .padStart(8),
    );
    console.log(name.padEnd(30), ...times);
}
