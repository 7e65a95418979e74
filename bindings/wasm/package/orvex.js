import { Call, Memory } from './memory.js';
import {
    boolOf,
    intOf,
    isPoint,
    isRect,
    matrixOf,
    numberOf,
    pointOf,
    point32fOf,
    pointsOf,
    rectOf,
    rectsOf,
    rotatedRectOf,
    sizeOf,
} from './values.js';

const pointIn = (call) => ({ x: call.number(0), y: call.number(1) });
const rectIn = (call) => ({ ...pointIn(call), width: call.number(2), height: call.number(3) });
const pairs = (numbers) => {
    const points = new Array(numbers.length / 2);
    for (let k = 0; k < points.length; ++k) points[k] = { x: numbers[2 * k], y: numbers[2 * k + 1] };
    return points;
};
const quadruples = (numbers) => {
    const rects = new Array(numbers.length / 4);
    for (let k = 0; k < rects.length; ++k) {
        const [x, y, width, height] = numbers.subarray(4 * k, 4 * k + 4);
        rects[k] = { x, y, width, height };
    }
    return rects;
};
const parts = (lengths, items) => {
    let begin = 0;
    return Array.from(lengths, (length) => items.slice(begin, (begin += length)));
};
const rotatedRectIn = (call) => ({
    pts: pairs(call.listOfFloats(0, 2)),
    center: { x: call.real(2), y: call.real(3) },
    width: call.number(4),
    height: call.number(5),
    angle: call.real(6),
});

/** The operations, over a memory of their own. Methods are documented in index.d.ts. */
export class Orvex {
    #memory;
    onLines = null;

    static over(module) {
        const orvex = new Orvex();
        orvex.#memory = new Memory(module);
        return orvex;
    }

    get memorySize() {
        return this.#memory.size;
    }

    // ---- Colour conversion ----

    bgr2gray(src) {
        return this.#image('bgr2gray', src);
    }

    yuv2bgr(yuv, rows, cols) {
        if (!(yuv instanceof Uint8Array)) throw new TypeError('yuv must be a Uint8Array');
        intOf(rows, 'rows');
        intOf(cols, 'cols');
        if (rows < 0 || cols < 0)
            throw new RangeError(`a frame of ${rows} x ${cols} pixels: extents begin at 0`);
        const needed =
            rows && cols ? (Math.floor((rows - 1) / 2) + rows) * cols + Math.ceil(cols / 2) * 2 : 0;
        if (yuv.length < needed) {
            throw new RangeError(`yuv of ${rows} x ${cols} pixels needs ${needed} bytes, not ${yuv.length}`);
        }
        return this.#call((call) => {
            const dst = call.output();
            call.run('yuv2bgr', call.block(yuv.subarray(0, needed)), rows, cols, dst);
            return call.imageAt(dst);
        });
    }

    bgr2hsv(src) {
        return this.#image('bgr2hsv', src);
    }

    // ---- Statistics ----

    equalizeHist(src) {
        return this.#image('equalizeHist', src);
    }

    hist(src) {
        return this.#call((call) => {
            call.run('hist', call.image(src, 'src'));
            return call.listOfFloats(0, 1);
        });
    }

    meanStdDev(src) {
        return this.#call((call) => {
            call.run('meanStdDev', call.image(src, 'src'));
            return { mean: call.real(0), stddev: call.real(1) };
        });
    }

    minVal(src) {
        return this.#number('minVal', src);
    }

    maxVal(src) {
        return this.#number('maxVal', src);
    }

    countNonZero(src) {
        return this.#number('countNonZero', src);
    }

    countNonZeroRate(src) {
        return this.#call((call) => {
            call.run('countNonZeroRate', call.image(src, 'src'));
            return call.real(0);
        });
    }

    // ---- Thresholds ----

    otsu(src, mask) {
        return this.#call((call) => {
            call.run('otsu', call.image(src, 'src'), call.imageOrNone(mask, 'mask'));
            return call.number(0);
        });
    }

    thresholdSeg(src, threshold) {
        return this.#image('thresholdSeg', src, intOf(threshold, 'threshold'));
    }

    threshold(src, low_th, high_th, type, mask) {
        const words = [intOf(low_th, 'low_th'), intOf(high_th, 'high_th'), intOf(type, 'type')];
        return this.#call((call) => {
            const given = call.image(src, 'src');
            const dst = call.output();
            call.run('threshold', given, dst, ...words, call.imageOrNone(mask, 'mask'));
            return { threshold: call.number(0), dst: call.imageAt(dst) };
        });
    }

    adaptiveThreshold(src, block_size, std_ratio, inverse = false) {
        return this.#image(
            'adaptiveThreshold',
            src,
            intOf(block_size, 'block_size'),
            numberOf(std_ratio, 'std_ratio'),
            boolOf(inverse, 'inverse'),
        );
    }

    // ---- Quarter turns and mirroring ----

    rot90ClockWise_FlipLR(src, n, f) {
        return this.#image('rot90ClockWise_FlipLR', src, intOf(n, 'n'), intOf(f, 'f'));
    }

    flipLR(src) {
        return this.#image('flipLR', src);
    }

    rot90ClockWise(...given) {
        return this.#turned('rot90ClockWise', ...given);
    }

    rot90AntiClockWise(...given) {
        return this.#turned('rot90AntiClockWise', ...given);
    }

    #turned(name, what, size, n) {
        if (!isPoint(what) && !isRect(what)) return this.#image(name, what, intOf(size, 'n'));
        return this.#call((call) => {
            if (isRect(what)) {
                call.run(`${name}_rect`, ...rectOf(what, 'src'), ...sizeOf(size, 'img_size'), intOf(n, 'n'));
                return rectIn(call);
            }
            call.run(`${name}_point`, ...pointOf(what, 'pt'), ...sizeOf(size, 'size'), intOf(n, 'n'));
            return pointIn(call);
        });
    }

    // ---- Resize and affine transforms ----

    resize(src, out_size, interp = 0) {
        const way = intOf(interp, 'interp');
        if (typeof out_size === 'number') return this.#image('resize_by', src, out_size, way);
        return this.#image('resize_to', src, ...sizeOf(out_size, 'out_size'), way);
    }

    getRotationMatrix2D(center, angle, scale) {
        return this.#call((call) => {
            call.run(
                'getRotationMatrix2D',
                ...point32fOf(center, 'center'),
                numberOf(angle, 'angle'),
                numberOf(scale, 'scale'),
            );
            return Float32Array.from({ length: 6 }, (_, k) => call.real(k));
        });
    }

    warpAffine(src, trans_matrix, out_size, interp = 0, mask) {
        const matrix = matrixOf(trans_matrix, 'trans_matrix');
        const words = [...sizeOf(out_size, 'out_size'), intOf(interp, 'interp')];
        return this.#call((call) => {
            const given = call.image(src, 'src');
            const dst = call.output();
            const marks = call.imageOrNone(mask, 'mask');
            call.run('warpAffine', given, dst, call.block(matrix), ...words, marks);
            const made = call.imageAt(dst);
            return marks === 0 ? made : { dst: made, mask: call.imageAt(marks) };
        });
    }

    pointAffine(pt, trans_mat, scale, origin) {
        const matrix = matrixOf(trans_mat, 'trans_mat');
        return this.#call((call) => {
            call.run(
                'pointAffine',
                ...pointOf(pt, 'pt'),
                call.block(matrix),
                numberOf(scale, 'scale'),
                ...pointOf(origin, 'origin'),
            );
            return pointIn(call);
        });
    }

    rectAffine(src, trans_mat) {
        const matrix = matrixOf(trans_mat, 'trans_mat');
        return this.#call((call) => {
            call.run('rectAffine', ...rectOf(src, 'src'), call.block(matrix));
            return rectIn(call);
        });
    }

    checkRectInMat(size, rect) {
        return this.#call((call) => {
            call.run('checkRectInMat', ...sizeOf(size, 'size'), ...rectOf(rect, 'rect'));
            return rectIn(call);
        });
    }

    // ---- Binary morphology ----

    dilateBinary(src, size) {
        return this.#image('dilateBinary', src, ...sizeOf(size, 'size'));
    }

    erodeBinary(src, size) {
        return this.#image('erodeBinary', src, ...sizeOf(size, 'size'));
    }

    openBinary(src, size) {
        return this.#image('openBinary', src, ...sizeOf(size, 'size'));
    }

    closeBinary(src, size) {
        return this.#image('closeBinary', src, ...sizeOf(size, 'size'));
    }

    morphologyBinary(src, size, type) {
        return this.#image('morphologyBinary', src, ...sizeOf(size, 'size'), intOf(type, 'type'));
    }

    dilateRect(src, size) {
        return this.#call((call) => {
            call.run('dilateRect', ...rectOf(src, 'src'), ...sizeOf(size, 'size'));
            return rectIn(call);
        });
    }

    // ---- Grey morphology ----

    dilateGray(src, size) {
        return this.#image('dilateGray', src, ...sizeOf(size, 'size'));
    }

    erodeGray(src, size) {
        return this.#image('erodeGray', src, ...sizeOf(size, 'size'));
    }

    morphGradient(src, size) {
        return this.#image('morphGradient', src, ...sizeOf(size, 'size'));
    }

    // ---- Components ----

    bwlabel(src) {
        return this.#call((call) => {
            const given = call.image(src, 'src');
            const dst = call.labels();
            call.run('bwlabel', given, dst);
            return { dst: call.labelsAt(dst), num: call.number(0) };
        });
    }

    connectdComponent(src, points = false) {
        boolOf(points, 'points');
        return this.#call((call) => {
            call.run(points ? 'connectdComponent_points' : 'connectdComponent', call.image(src, 'src'));
            const rects = quadruples(call.listOfInts(0, 4));
            if (!points) return rects;
            return { rects, points: parts(call.listOfInts(2, 1), pairs(call.listOfInts(4, 2))) };
        });
    }

    divideComponentsToRows(rects) {
        const numbers = rectsOf(rects, 'rects');
        return this.#call((call) => {
            call.run('divideComponentsToRows', call.block(numbers), numbers.length / 4);
            return parts(call.listOfInts(0, 1), quadruples(call.listOfInts(2, 4)));
        });
    }

    // ---- Shapes ----

    convexHull(points) {
        const numbers = pointsOf(points, 'points');
        return this.#call((call) => {
            call.run('convexHull', call.block(numbers), numbers.length / 2);
            return pairs(call.listOfInts(0, 2));
        });
    }

    minAreaRect(mat) {
        return this.#call((call) => {
            if (Array.isArray(mat)) {
                const numbers = pointsOf(mat, 'points');
                call.run('minAreaRect_points', call.block(numbers), numbers.length / 2);
            } else {
                call.run('minAreaRect', call.image(mat, 'mat'));
            }
            return rotatedRectIn(call);
        });
    }

    getRotatedRectAngle(rotate_rect) {
        const { pts, words } = rotatedRectOf(rotate_rect, 'rotate_rect');
        return this.#call((call) => {
            call.run('getRotatedRectAngle', call.block(pts), pts.length / 2, ...words);
            return call.real(0);
        });
    }

    calcLineDegree(p1, p2) {
        return this.#call((call) => {
            call.run('calcLineDegree', ...point32fOf(p1, 'p1'), ...point32fOf(p2, 'p2'));
            return call.real(0);
        });
    }

    // ---- Detectors ----

    getSharpness(src, mask) {
        return this.#call((call) => {
            call.run('getSharpness', call.image(src, 'src'), call.imageOrNone(mask, 'mask'));
            return call.real(0);
        });
    }

    saliencyDetect(src, mask) {
        return this.#call((call) => {
            const given = call.image(src, 'src');
            const dst = call.output();
            call.run('saliencyDetect', given, dst, call.image(mask, 'mask'));
            return { dst: call.imageAt(dst), level_saliency: call.listOfBytes(0) };
        });
    }

    redColorDetect(src, relaxed = false) {
        return this.#image('redColorDetect', src, boolOf(relaxed, 'relaxed'));
    }

    // ---- Pages, as docprep levels them ----

    estimateSkew(binary) {
        return this.#call((call) => {
            call.run('estimateSkew', call.image(binary, 'binary'));
            return call.real(0);
        });
    }

    levelPage(src, degrees) {
        return this.#image('levelPage', src, numberOf(degrees, 'degrees'));
    }

    // ---- Calls ----

    #call(body) {
        const call = new Call(this.#memory);
        try {
            return body(call);
        } finally {
            call.end();
            if (this.onLines && call.lines.length > 0) this.onLines(call.lines);
        }
    }

    /** An operation from an image to an image. */
    #image(name, src, ...words) {
        return this.#call((call) => {
            const given = call.image(src, 'src');
            const dst = call.output();
            call.run(name, given, dst, ...words);
            return call.imageAt(dst);
        });
    }

    /** An operation from an image to a whole number. */
    #number(name, src) {
        return this.#call((call) => {
            call.run(name, call.image(src, 'src'));
            return call.number(0);
        });
    }
}
