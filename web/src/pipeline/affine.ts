import type { Point } from './library.js';

/** [a, b, c, d, e, f]: takes (x, y) to (a x + b y + c, d x + e y + f), as the library's 2 x 3 matrices do. */
export type Affine = readonly [number, number, number, number, number, number];

export const IDENTITY: Affine = [1, 0, 0, 0, 1, 0];

/** The map that does `before` and then `after`. */
export function combined(after: Affine, before: Affine): Affine {
    const [a, b, c, d, e, f] = after;
    const [p, q, r, s, t, u] = before;
    return [a * p + b * s, a * q + b * t, a * r + b * u + c, d * p + e * s, d * q + e * t, d * r + e * u + f];
}

export function inverse(map: Affine): Affine {
    const [a, b, c, d, e, f] = map;
    const determinant = a * e - b * d;
    const [p, q, s, t] = [e / determinant, -b / determinant, -d / determinant, a / determinant];
    return [p, q, -(p * c + q * f), s, t, -(s * c + t * f)];
}

export function mapped(map: Affine, { x, y }: Point): Point {
    return { x: map[0] * x + map[1] * y + map[2], y: map[3] * x + map[4] * y + map[5] };
}

/**
 * The same map of places on a canvas, where pixel (0, 0) covers the unit square: the library's matrices put its
 * centre at (0, 0).
 */
export function betweenCorners(map: Affine): Affine {
    const [a, b, c, d, e, f] = map;
    return [a, b, c + (1 - a - b) / 2, d, e, f + (1 - d - e) / 2];
}

/** Where the pixels of a cols x rows picture go that is mirrored and then turned clockwise `quarters` times. */
export function turned(quarters: number, mirrored: boolean, cols: number, rows: number): Affine {
    let map: Affine = mirrored ? [-1, 0, cols, 0, 1, 0] : IDENTITY;
    let [width, height] = [cols, rows];
    for (let turn = 0; turn < quarters; ++turn) {
        map = combined([0, -1, height, 1, 0, 0], map);
        [width, height] = [height, width];
    }
    return map;
}
