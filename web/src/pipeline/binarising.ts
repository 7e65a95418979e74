/** Parting print from paper: by surroundings, by Otsu's level, or by a given one. */
import { Image } from 'orvex_991';
import type { Library, Picture } from './library.js';
import type { Command, CppNames, Facts, Values } from './stage.js';
import { flag, makes, number } from './wording.js';

const bright = (values: Values): boolean => !flag(values, 'print');

export function inverted({ rows, cols, channels, data }: Picture): Picture {
    const image = new Image(rows, cols, channels);
    for (let k = 0; k < data.length; ++k) image.data[k] = 255 - data[k]!;
    return image;
}

/** docprep has no command that only swaps; of a picture with both levels this one does. */
export function swap(facts: Facts): Command {
    const whole = 2 * Math.max(Number(facts['rows']), Number(facts['cols'])) + 1;
    const comment = 'Swaps 0 and 255: what is not above the mean of the whole picture becomes 255.';
    return { ...makes('adaptiveThreshold', `--block-size ${whole}`, '--inverse'), comment };
}

export function binarised(
    source: Picture,
    values: Values,
    library: Library,
): { picture: Picture; level?: number } {
    switch (values['method']) {
        case 'adaptive': {
            const [block, ratio] = [number(values, 'block'), number(values, 'ratio')];
            return { picture: library.adaptiveThreshold(source, block, ratio, !bright(values)) };
        }
        case 'otsu': {
            const { dst, threshold } = library.threshold(source, 0, 255, bright(values) ? 8 : 8 | 1);
            return { picture: dst, level: threshold };
        }
        default: {
            const level = number(values, 'level');
            const picture = library.thresholdSeg(source, level);
            return { picture: bright(values) ? picture : inverted(picture), level };
        }
    }
}

export function binariseLines(values: Values, { picture }: CppNames): string[] {
    switch (values['method']) {
        case 'adaptive': {
            const ratio = number(values, 'ratio');
            return [
                'Picture binary;',
                `CImgproc::adaptiveThreshold(${picture}, binary, ${number(values, 'block')}, ${ratio}, ${!bright(values)});`,
            ];
        }
        case 'otsu':
            return [
                'Picture binary;',
                `const int level = CImgproc::threshold(${picture}, binary, 0, 255, ${bright(values) ? '8' : '8 | 1'}, {});`,
                'std::printf("threshold %d\\n", level);',
            ];
        default:
            return [
                'Picture binary;',
                `CImgproc::thresholdSeg(${picture}, binary, ${number(values, 'level')});`,
                ...(bright(values) ? [] : ['~binary;']),
            ];
    }
}

export function binariseCommands(values: Values, facts: Facts): Command[] {
    switch (values['method']) {
        case 'adaptive':
            return [
                makes(
                    'adaptiveThreshold',
                    `--block-size ${number(values, 'block')}`,
                    `--std-ratio ${number(values, 'ratio')}`,
                    ...(bright(values) ? [] : ['--inverse']),
                ),
            ];
        case 'otsu':
            return [makes('threshold', `--type ${bright(values) ? 8 : 9}`)];
        default: {
            const cut = makes('thresholdSeg', `--threshold ${number(values, 'level')}`);
            return bright(values) ? [cut] : [cut, swap(facts)];
        }
    }
}
