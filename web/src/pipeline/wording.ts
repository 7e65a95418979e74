/** How values are read, and written in C++ and in commands. */
import type { Command, Values } from './stage.js';

export const number = (values: Values, name: string): number => Number(values[name]);
export const flag = (values: Values, name: string): boolean => values[name] === true;

/** As C++ and docprep read single precision without loss. */
export const single = (value: number): string => Math.fround(value).toPrecision(9);
export const float = (value: number): string => `${single(value)}f`;

/** One `docprep op` that writes a picture, and one that prints numbers. */
export const makes = (operation: string, ...options: string[]): Command => ({
    operation,
    options,
    makesPicture: true,
});
export const prints = (operation: string, ...options: string[]): Command => ({
    operation,
    options,
    makesPicture: false,
});
