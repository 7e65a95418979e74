/** Sets of points to lay hulls and rectangles around. */
import { cornersOf, rowsLines, rowsOf } from './letters.js';
import type { Library, Point } from './library.js';
import { outlineOf, outlinesByLabel } from './outlines.js';
import type { CppNames, Flow, Values } from './stage.js';
import { number } from './wording.js';

export function pointSets(flow: Flow, values: Values, library: Library): Point[][] {
    switch (values['of']) {
        case 'rows':
            return rowsOf(flow, library).map((row) => row.flatMap(cornersOf));
        case 'components': {
            const { dst, num } = library.bwlabel(flow.picture);
            return outlinesByLabel(dst, num)
                .sort((one, other) => other.length - one.length)
                .slice(0, number(values, 'count'));
        }
        default:
            return [outlineOf(flow.picture)];
    }
}

const HULL_LINES = [
    'orvex_991::vector<Point> hull;',
    'CImgproc::convexHull(points, hull);',
    'const RotatedRect rect = CImgproc::minAreaRect(points);',
    'std::printf("hull of %d corners, rectangle %d x %d\\n", hull.size(), rect.width, rect.height);',
];

const indented = (lines: readonly string[]): string[] => lines.map((line) => `    ${line}`);

export function hullLines(values: Values, names: CppNames): string[] {
    switch (values['of']) {
        case 'rows': {
            const { lines, rows } = rowsLines(names);
            return [
                ...lines,
                `for (int row = 0; row < ${rows}.size(); ++row) {`,
                '    orvex_991::vector<Point> points;',
                `    for (int k = 0; k < ${rows}[row].size(); ++k) {`,
                `        const Point first = ${rows}[row][k].left_top(), last = ${rows}[row][k].right_bottom();`,
                '        for (const int x : {first.x, last.x})',
                '            for (const int y : {first.y, last.y}) points.push_back(Point(x, y));',
                '    }',
                ...indented(HULL_LINES),
                '}',
            ];
        }
        case 'components':
            return [
                'Rects bounds;',
                'orvex_991::vector<orvex_991::vector<Point>> pixels;',
                `CImgproc::connectdComponent(${names.picture}, bounds, &pixels);`,
                'for (int k = 0; k < pixels.size(); ++k) {',
                '    const orvex_991::vector<Point>& points = pixels[k];',
                ...indented(HULL_LINES),
                '}',
            ];
        default:
            return [
                'orvex_991::vector<Point> points;',
                `for (int row = 0; row < ${names.picture}.rows; ++row)`,
                `    for (int col = 0; col < ${names.picture}.cols; ++col)`,
                `        if (${names.picture}.at(row, col) != 0) points.push_back(Point(col, row));`,
                ...HULL_LINES,
            ];
    }
}
