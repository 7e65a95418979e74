/** Colours that stand apart from their neighbours and can be seen on black, white and photographs. */
const COLOURS = ['#e5484d', '#3b82f6', '#16a34a', '#f59e0b', '#a855f7', '#06b6d4', '#ec4899', '#84cc16'];

export const COLOUR_COUNT = COLOURS.length;

export function colourOf(group: number): string {
    return COLOURS[group % COLOURS.length]!;
}
