/**
 * Points that have the same convex hull as all pixels of something: in each row the first and the last one. A page of
 * 12 megapixels so becomes some thousand points.
 */
import type { Labels } from 'orvex_991';
import type { Picture, Point } from './library.js';

export function outlineOf({ rows, cols, data }: Picture): Point[] {
    const points: Point[] = [];
    for (let row = 0; row < rows; ++row) {
        const line = data.subarray(row * cols, (row + 1) * cols);
        const first = line.findIndex((level) => level !== 0);
        if (first < 0) continue;
        let last = cols - 1;
        while (line[last] === 0) --last;
        points.push({ x: first, y: row });
        if (last > first) points.push({ x: last, y: row });
    }
    return points;
}

/** The same for each of the labels 1 .. count. */
export function outlinesByLabel({ rows, cols, data: labels }: Labels, count: number): Point[][] {
    const outlines: Point[][] = Array.from({ length: count }, () => []);
    const first = new Int32Array(count + 1);
    const last = new Int32Array(count + 1);
    for (let row = 0; row < rows; ++row) {
        const seen: number[] = [];
        for (let col = 0; col < cols; ++col) {
            const label = labels[row * cols + col]!;
            if (label === 0) continue;
            if (first[label] === 0) {
                first[label] = col + 1;
                seen.push(label);
            }
            last[label] = col + 1;
        }
        for (const label of seen) {
            const outline = outlines[label - 1]!;
            outline.push({ x: first[label]! - 1, y: row });
            if (last[label]! > first[label]!) outline.push({ x: last[label]! - 1, y: row });
            first[label] = 0;
        }
    }
    return outlines;
}
