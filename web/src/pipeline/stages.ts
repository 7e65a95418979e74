/** The table of stages. Sliders, links, results, C++ and commands are all made from it. */
import { Image } from 'orvex_991';
import { betweenCorners, IDENTITY, turned, type Affine } from './affine.js';
import { binariseCommands, binarised, binariseLines, inverted, swap } from './binarising.js';
import { levelled, printOf } from './deskew.js';
import { hullLines, pointSets } from './hulls.js';
import { around, boxes, letterFacts, lettersOf, rowsLines } from './letters.js';
import { thinned } from './seal_mask.js';
import type { Kind, Stage } from './stage.js';
import { flag, float, makes, number, prints, single } from './wording.js';

const MORPHOLOGIES = ['dilate', 'erode', 'open', 'close'];

const soft = (kind: Kind): Kind => (kind === 'binary' ? 'gray' : kind);
const ONE_CHANNEL: readonly Kind[] = ['gray', 'binary'];
const ANY: readonly Kind[] = ['colour', 'gray', 'binary'];

export const STAGES: readonly Stage[] = [
    {
        id: 'seal',
        title: 'Red seal',
        about: 'Finds round red seals in a colour picture.',
        on: true,
        measures: true,
        accepts: ['colour'],
        parameters: [{ type: 'toggle', name: 'relaxed', label: 'Of any size and shape', initial: false }],
        nothing: ['could not find any valid red circle'],
        run({ picture }, values, library) {
            const mask = library.redColorDetect(picture, flag(values, 'relaxed'));
            const pixels = library.countNonZero(mask);
            const share = (100 * pixels) / (mask.rows * mask.cols);
            return {
                facts: { pixels },
                measured: [
                    { label: 'Red seal', text: pixels === 0 ? 'none' : `${share.toFixed(1)} % of the area` },
                ],
                overlays:
                    pixels === 0
                        ? []
                        : [{ type: 'mask', mask: thinned(mask), cols: mask.cols, rows: mask.rows }],
            };
        },
        cpp: (values, { picture }) => ({
            lines: [
                'Picture seals;',
                'try {',
                `    CImgproc::redColorDetect(${picture}, seals, ${flag(values, 'relaxed')});`,
                '} catch (const orvex_991::CException& none) {',
                '    if (none.code != 2) throw;  // 2: no seal; the mask is zero then',
                '}',
            ],
        }),
        commands: (values) => [
            { ...makes('redColorDetect', ...(flag(values, 'relaxed') ? ['--relaxed'] : [])), aside: true },
        ],
    },
    {
        id: 'turn',
        title: 'Turn',
        about: 'Quarter turns, and a mirror image.',
        on: false,
        accepts: ANY,
        parameters: [
            {
                type: 'choice',
                name: 'quarters',
                label: 'Clockwise',
                options: [
                    { value: '0', label: '0°' },
                    { value: '1', label: '90°' },
                    { value: '2', label: '180°' },
                    { value: '3', label: '270°' },
                ],
                initial: '1',
            },
            { type: 'toggle', name: 'mirror', label: 'Mirrored first', initial: false },
        ],
        run({ picture }, values, library) {
            const [n, f] = [number(values, 'quarters'), flag(values, 'mirror')];
            return {
                picture: library.rot90ClockWise_FlipLR(picture, n, f ? 1 : 0),
                map: turned(n, f, picture.cols, picture.rows),
            };
        },
        cpp: (values, { picture }) => ({
            lines: [
                'Picture turned;',
                `CImgproc::rot90ClockWise_FlipLR(${picture}, turned, ${number(values, 'quarters')}, ${flag(values, 'mirror') ? 1 : 0});`,
            ],
            picture: 'turned',
        }),
        commands: (values) => [
            makes(
                'rot90ClockWise_FlipLR',
                `--n ${number(values, 'quarters')}`,
                `--f ${flag(values, 'mirror') ? 1 : 0}`,
            ),
        ],
    },
    {
        id: 'resize',
        title: 'Resize',
        about: 'Scales both sides by one factor; fractions of a pixel are dropped.',
        on: false,
        accepts: ANY,
        gives: soft,
        parameters: [
            {
                type: 'slider',
                name: 'scale',
                label: 'Factor',
                least: 0.05,
                most: 2,
                step: 0.05,
                initial: 0.5,
            },
        ],
        run({ picture }, values, library) {
            const scaled = library.resize(picture, number(values, 'scale'));
            return {
                picture: scaled,
                map: [scaled.cols / picture.cols, 0, 0, 0, scaled.rows / picture.rows, 0],
            };
        },
        cpp: (values, { picture }) => ({
            lines: [
                'Picture resized;',
                `CImgproc::resize(${picture}, resized, ${float(number(values, 'scale'))}, INTERP_LINEAR);`,
            ],
            picture: 'resized',
        }),
        commands: (values) => [makes('resize-scale', `--scale ${single(number(values, 'scale'))}`)],
    },
    {
        id: 'gray',
        title: 'Gray',
        about: 'Gray levels of a colour picture, in integers: white gives 253.',
        on: true,
        accepts: ANY,
        gives: () => 'gray',
        parameters: [],
        histogram: 'output',
        run: ({ picture }, _, library) => ({ picture: library.bgr2gray(picture) }),
        cpp: (_, { picture }) => ({
            lines: ['Picture gray;', `CImgproc::bgr2gray(${picture}, gray);`],
            picture: 'gray',
        }),
        commands: () => [makes('bgr2gray')],
    },
    {
        id: 'equalise',
        title: 'Equalise',
        about: 'Spreads the gray levels by their cumulative share.',
        on: false,
        accepts: ONE_CHANNEL,
        gives: () => 'gray',
        parameters: [],
        histogram: 'output',
        run: ({ picture }, _, library) => ({ picture: library.equalizeHist(picture) }),
        cpp: (_, { picture }) => ({
            lines: ['Picture equalised;', `CImgproc::equalizeHist(${picture}, equalised);`],
            picture: 'equalised',
        }),
        commands: () => [makes('equalizeHist')],
    },
    {
        id: 'sharpness',
        title: 'Sharpness',
        about: 'How sharp the picture is, as one number to compare pictures of one scene by.',
        on: true,
        measures: true,
        accepts: ANY,
        parameters: [],
        run({ picture }, _, library) {
            const sharpness = library.getSharpness(picture);
            return {
                facts: { sharpness },
                measured: [{ label: 'Sharpness', text: `${Math.round(sharpness)}` }],
            };
        },
        cpp: (_, { picture }) => ({
            lines: [`std::printf("sharpness %g\\n", CImgproc::getSharpness(${picture}));`],
        }),
        commands: () => [prints('getSharpness')],
    },
    {
        id: 'deskew',
        title: 'Deskew',
        about: 'Makes rows of text level; nothing is cut off.',
        on: true,
        accepts: ANY,
        gives: soft,
        parameters: [
            {
                type: 'choice',
                name: 'how',
                label: 'Angle',
                options: [
                    { value: 'found', label: 'As found' },
                    { value: 'given', label: 'By hand' },
                ],
                initial: 'found',
            },
            {
                type: 'slider',
                name: 'angle',
                label: 'Degrees',
                least: -15,
                most: 15,
                step: 0.1,
                initial: 0,
                when: (values) => values['how'] === 'given',
            },
        ],
        run({ picture, kind }, values, library) {
            const found = values['how'] === 'found';
            const angle = found
                ? library.estimateSkew(printOf(picture, kind, library))
                : number(values, 'angle');
            const { matrix, size } = levelled(picture, angle, library);
            const measured = [{ label: found ? 'Skew found' : 'Turned by', text: `${angle.toFixed(2)}°` }];
            if (!matrix) return { map: IDENTITY, facts: { angle }, measured };
            return {
                picture: library.warpAffine(picture, matrix, size),
                map: betweenCorners([...matrix] as unknown as Affine),
                facts: { angle, matrix: [...matrix], ...size },
                measured,
            };
        },
        cpp(_, { picture }, facts) {
            const matrix = facts['matrix'] as number[] | undefined;
            if (!matrix) return { lines: ['// Level as it is.'] };
            return {
                lines: [
                    `// Turned by ${Number(facts['angle']).toFixed(2)} degrees, as was found on this photograph or set by hand.`,
                    'Mat<float> levelling;',
                    'levelling.mat_create(2, 3, 1, 0);',
                    `const float terms[] = {${matrix.slice(0, 3).map(float).join(', ')},`,
                    `                       ${matrix.slice(3).map(float).join(', ')}};`,
                    'for (int k = 0; k < 6; ++k) levelling.data[k] = terms[k];',
                    'Picture deskewed;',
                    `CImgproc::warpAffine(${picture}, deskewed, levelling, Size(${facts['width']}, ${facts['height']}), `,
                    '                     INTERP_LINEAR, nullptr);',
                ],
                picture: 'deskewed',
            };
        },
        commands(_, facts) {
            const matrix = facts['matrix'] as number[] | undefined;
            if (!matrix) return [];
            const options = [
                `--matrix ${matrix.map(single).join(',')}`,
                `--out-size ${facts['width']}x${facts['height']}`,
            ];
            return [
                {
                    ...makes('warpAffine', ...options),
                    comment: `Turned by ${Number(facts['angle']).toFixed(2)} degrees.`,
                },
            ];
        },
    },
    {
        id: 'saliency',
        title: 'Saliency',
        about: 'How far each pixel’s gray level is from the others.',
        on: false,
        accepts: ONE_CHANNEL,
        gives: () => 'gray',
        parameters: [],
        histogram: 'output',
        run({ picture }, _, library) {
            const everywhere = new Image(picture.rows, picture.cols, 1);
            everywhere.data.fill(255);
            return { picture: library.saliencyDetect(picture, everywhere).dst };
        },
        cpp: (_, { picture }) => ({
            lines: [
                'Picture everywhere, salient;',
                `everywhere.mat_create(${picture}.rows, ${picture}.cols, 1, 255);`,
                'orvex_991::vector<unsigned char> saliency_of_level;',
                `CImgproc::saliencyDetect(${picture}, salient, everywhere, saliency_of_level);`,
            ],
            picture: 'salient',
        }),
        commands: () => [makes('saliencyDetect')],
    },
    {
        id: 'binarise',
        title: 'Threshold',
        about: 'Parts print from paper: by surroundings, by Otsu’s level, or by one of your own.',
        on: true,
        accepts: ONE_CHANNEL,
        gives: () => 'binary',
        histogram: 'input',
        parameters: [
            {
                type: 'choice',
                name: 'method',
                label: 'Method',
                options: [
                    { value: 'adaptive', label: 'Adaptive' },
                    { value: 'otsu', label: 'Otsu' },
                    { value: 'level', label: 'Level' },
                ],
                initial: 'adaptive',
            },
            {
                type: 'slider',
                name: 'block',
                label: 'Window',
                least: 3,
                most: 401,
                step: 2,
                initial: 81,
                unit: 'px',
                when: (values) => values['method'] === 'adaptive',
            },
            {
                type: 'slider',
                name: 'ratio',
                label: 'Deviations',
                least: -2,
                most: 2,
                step: 0.05,
                initial: -0.6,
                when: (values) => values['method'] === 'adaptive',
            },
            {
                type: 'slider',
                name: 'level',
                label: 'Bright from',
                least: 0,
                most: 255,
                step: 1,
                initial: 128,
                when: (values) => values['method'] === 'level',
            },
            { type: 'toggle', name: 'print', label: 'Dark becomes 255', initial: true },
        ],
        run({ picture }, values, library) {
            const { picture: binary, level } = binarised(picture, values, library);
            const share = (100 * library.countNonZero(binary)) / Math.max(1, binary.rows * binary.cols);
            return {
                picture: binary,
                facts: {
                    ...(level === undefined ? {} : { level }),
                    rows: picture.rows,
                    cols: picture.cols,
                    share,
                },
                measured: [
                    ...(level === undefined ? [] : [{ label: 'Threshold', text: `${level}` }]),
                    { label: 'Foreground', text: `${share.toFixed(1)} %` },
                ],
            };
        },
        cpp: (values, names) => ({ lines: binariseLines(values, names), picture: 'binary' }),
        commands: binariseCommands,
    },
    {
        id: 'morphology',
        title: 'Morphology',
        about: 'Grows or thins what is white, through a rectangular window.',
        on: false,
        accepts: ['binary'],
        parameters: [
            {
                type: 'choice',
                name: 'type',
                label: 'Operation',
                options: [
                    { value: 'dilate', label: 'Dilate' },
                    { value: 'erode', label: 'Erode' },
                    { value: 'open', label: 'Open' },
                    { value: 'close', label: 'Close' },
                ],
                initial: 'close',
            },
            {
                type: 'slider',
                name: 'width',
                label: 'Width',
                least: 1,
                most: 61,
                step: 1,
                initial: 9,
                unit: 'px',
            },
            {
                type: 'slider',
                name: 'height',
                label: 'Height',
                least: 1,
                most: 61,
                step: 1,
                initial: 3,
                unit: 'px',
            },
        ],
        run: ({ picture }, values, library) => ({
            picture: library.morphologyBinary(
                picture,
                { width: number(values, 'width'), height: number(values, 'height') },
                MORPHOLOGIES.indexOf(String(values['type'])),
            ),
        }),
        cpp: (values, { picture }) => ({
            lines: [
                'Picture cleaned;',
                `CImgproc::morphologyBinary(${picture}, cleaned, Size(${values['width']}, ${values['height']}),`,
                `                           MORPH_${String(values['type']).toUpperCase()});`,
            ],
            picture: 'cleaned',
        }),
        commands: (values) => [
            makes(
                'morphologyBinary',
                `--type ${values['type']}`,
                `--size ${values['width']}x${values['height']}`,
            ),
        ],
    },
    {
        id: 'components',
        title: 'Components',
        about: 'What hangs together; those that are neither specks nor frames can be letters.',
        on: true,
        measures: true,
        accepts: ['binary'],
        parameters: [
            {
                type: 'slider',
                name: 'least',
                label: 'Height from',
                least: 1,
                most: 60,
                step: 1,
                initial: 5,
                unit: 'px',
            },
            {
                type: 'slider',
                name: 'most',
                label: 'to',
                least: 1,
                most: 100,
                step: 1,
                initial: 5,
                unit: '%',
            },
        ],
        run(flow, values, library) {
            const rects = library.connectdComponent(flow.picture);
            const { least, most } = letterFacts(flow, values);
            const letters = rects.filter((rect) => rect.height >= least && rect.height <= most);
            return {
                letters,
                facts: { components: rects.length, letters: letters.length, tallest: most, rects: letters },
                measured: [
                    { label: 'Components', text: rects.length.toLocaleString('en') },
                    { label: 'of letters’ height', text: letters.length.toLocaleString('en') },
                ],
                overlays: [
                    boxes(
                        letters,
                        letters.map((_, index) => index),
                    ),
                ],
            };
        },
        cpp: (values, { picture }, facts) => ({
            lines: [
                'Rects components, letters;',
                `CImgproc::connectdComponent(${picture}, components, nullptr);`,
                'for (int k = 0; k < components.size(); ++k) {',
                '    const int height = components[k].height;',
                `    if (height >= ${values['least']} && height <= ${facts['tallest'] ?? 0}) letters.push_back(components[k]);`,
                '}',
                'std::printf("%d components, %d of letters\' height\\n", components.size(), letters.size());',
            ],
            letters: 'letters',
        }),
        commands: () => [prints('connectdComponent')],
    },
    {
        id: 'rows',
        title: 'Rows',
        about: 'Groups components into rows of text.',
        on: true,
        measures: true,
        accepts: ['binary'],
        after: ['components'],
        parameters: [],
        run(flow, _, library) {
            const rows = library.divideComponentsToRows(lettersOf(flow, library));
            const letters = rows.flat();
            return {
                rows,
                facts: { rows },
                measured: [{ label: 'Rows', text: rows.length.toLocaleString('en') }],
                overlays: [
                    boxes(
                        letters,
                        rows.flatMap((row, index) => row.map(() => index)),
                    ),
                    boxes(
                        rows.filter((row) => row.length > 0).map(around),
                        rows.map((_, index) => index),
                    ),
                ],
            };
        },
        cpp(_, names) {
            const { lines, rows, letters } = rowsLines({ ...names, rows: undefined });
            return { lines: [...lines, `std::printf("%d rows\\n", ${rows}.size());`], rows, letters };
        },
        commands: () => [
            { ...prints('divideComponentsToRows'), comment: 'Of all components, whatever their height.' },
        ],
    },
    {
        id: 'hull',
        title: 'Hulls',
        about: 'The convex hull and the rotated rectangle of least area.',
        on: false,
        measures: true,
        accepts: ['binary'],
        after: ['components', 'rows'],
        parameters: [
            {
                type: 'choice',
                name: 'of',
                label: 'Around',
                options: [
                    { value: 'rows', label: 'Rows' },
                    { value: 'components', label: 'Components' },
                    { value: 'everything', label: 'All' },
                ],
                initial: 'rows',
            },
            {
                type: 'slider',
                name: 'count',
                label: 'The largest',
                least: 10,
                most: 3000,
                step: 10,
                initial: 500,
                when: (values) => values['of'] === 'components',
            },
        ],
        run(flow, values, library) {
            const sets = pointSets(flow, values, library);
            const hulls = sets.map((points) => library.convexHull(points));
            const rects = sets.map((points) => library.minAreaRect(points));
            const groups = sets.map((_, index) => index);
            return {
                facts: { hulls, rectangles: rects },
                measured: [{ label: 'Hulls', text: hulls.length.toLocaleString('en') }],
                overlays: [
                    { type: 'outlines', outlines: rects.map((rect) => rect.pts), groups },
                    { type: 'outlines', outlines: hulls, groups },
                ],
            };
        },
        cpp: (values, names) => ({ lines: hullLines(values, names) }),
        commands: () => [prints('convexHull'), prints('minAreaRect')],
    },
    {
        id: 'page',
        title: 'Ink on paper',
        about: 'Swaps 0 and 255, so that print is black and paper white.',
        on: true,
        accepts: ['binary'],
        after: ['components', 'rows', 'hull'],
        parameters: [],
        run: ({ picture }) => ({
            picture: inverted(picture),
            facts: { rows: picture.rows, cols: picture.cols },
        }),
        cpp: (_, { picture }) => ({ lines: [`Picture page = ${picture};`, '~page;'], picture: 'page' }),
        commands: (_, facts) => [swap(facts)],
    },
];

export function stageOf(id: string): Stage {
    const stage = STAGES.find((one) => one.id === id);
    if (!stage) throw new RangeError(`no stage is called ${id}`);
    return stage;
}
