// Arguments as the numbers that the module takes. Every error names the argument: TypeError for what is of another
// type, RangeError for what is no 32-bit whole number.

const LEAST = -(2 ** 31);
const MOST = 2 ** 31 - 1;

export function numberOf(value, name) {
    if (typeof value !== 'number') throw new TypeError(`${name} must be a number`);
    return value;
}

export function intOf(value, name) {
    numberOf(value, name);
    if (!Number.isInteger(value) || value < LEAST || value > MOST) {
        throw new RangeError(`${name} is ${value}: it must be a whole number of 32 bits`);
    }
    return value;
}

export function boolOf(value, name) {
    if (typeof value !== 'boolean') throw new TypeError(`${name} must be true or false`);
    return value;
}

function fieldsOf(value, name, fields, what, read) {
    if (typeof value !== 'object' || value === null || !fields.every((field) => field in value)) {
        throw new TypeError(`${name} must be ${what} {${fields.join(', ')}}`);
    }
    return fields.map((field) => read(value[field], `${name}.${field}`));
}

const POINT = ['x', 'y'];
const SIZE = ['width', 'height'];
const RECT = [...POINT, ...SIZE];

export const pointOf = (value, name) => fieldsOf(value, name, POINT, 'a point', intOf);
export const point32fOf = (value, name) => fieldsOf(value, name, POINT, 'a point', numberOf);
export const sizeOf = (value, name) => fieldsOf(value, name, SIZE, 'a size', intOf);
export const rectOf = (value, name) => fieldsOf(value, name, RECT, 'a rectangle', intOf);

const has = (value, fields) =>
    typeof value === 'object' && value !== null && fields.every((field) => field in value);
export const isRect = (value) => has(value, RECT);
export const isPoint = (value) => has(value, POINT) && !isRect(value);

function listOf(values, name, what, read, length, Numbers) {
    if (!Array.isArray(values)) throw new TypeError(`${name} must be an array of ${what}`);
    const numbers = new Numbers(length * values.length);
    values.forEach((value, k) => numbers.set(read(value, `${name}[${k}]`), length * k));
    return numbers;
}

export const pointsOf = (values, name) => listOf(values, name, 'points', pointOf, 2, Int32Array);
export const rectsOf = (values, name) => listOf(values, name, 'rectangles', rectOf, 4, Int32Array);

export function matrixOf(value, name) {
    if (!(value instanceof Float32Array) || value.length !== 6) {
        throw new TypeError(`${name} must be a Float32Array of 6 numbers, row by row`);
    }
    return value;
}

/** The corners, and what else a rotated rectangle has. */
export function rotatedRectOf(value, name) {
    if (!has(value, ['pts', 'center', 'width', 'height', 'angle'])) {
        throw new TypeError(`${name} must be a rotated rectangle {pts, center, width, height, angle}`);
    }
    return {
        pts: listOf(value.pts, `${name}.pts`, 'points', point32fOf, 2, Float32Array),
        words: [
            ...point32fOf(value.center, `${name}.center`),
            intOf(value.width, `${name}.width`),
            intOf(value.height, `${name}.height`),
            numberOf(value.angle, `${name}.angle`),
        ],
    };
}
