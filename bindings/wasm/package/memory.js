import { Image } from './image.js';
import { OrvexError } from './error.js';

const MOST_BYTES = 2 ** 31 - 1;

/** A module of its own: its memory, its functions, and the text that it prints. */
export class Memory {
    #exports;
    #results;
    #printed = [];

    constructor(module) {
        const instance = new WebAssembly.Instance(module, {
            env: { emscripten_notify_memory_growth: () => {} },
            wasi_snapshot_preview1: {
                clock_time_get: (_clock, _precision, time) => {
                    const now = BigInt(Math.round(performance.now() * 1e6));
                    new DataView(this.#exports.memory.buffer).setBigUint64(time, now, true);
                    return 0;
                },
                fd_write: (_file, parts, count, written) => this.#write(parts, count, written),
                proc_exit: () => {
                    throw new Error('the module has ended itself');
                },
            },
        });
        this.#exports = instance.exports;
        this.#exports._initialize();
        this.#results = this.#exports.orvex_results();
    }

    get size() {
        return this.#exports.memory.buffer.byteLength;
    }

    get functions() {
        return this.#exports;
    }

    bytes(address, length) {
        return new Uint8Array(this.#exports.memory.buffer, address, length);
    }

    ints(address, length) {
        return new Int32Array(this.#exports.memory.buffer, address, length);
    }

    floats(address, length) {
        return new Float32Array(this.#exports.memory.buffer, address, length);
    }

    /** The results' k-th word as a whole number or an address, and as a real number. */
    number(k) {
        return this.ints(this.#results + 8 * k, 1)[0];
    }

    real(k) {
        return new Float64Array(this.#exports.memory.buffer, this.#results + 8 * k, 1)[0];
    }

    message() {
        const address = this.#exports.orvex_message();
        const text = this.bytes(address, 128);
        return new TextDecoder().decode(text.slice(0, text.indexOf(0)));
    }

    #write(parts, count, written) {
        const list = this.ints(parts, 2 * count);
        let sum = 0;
        for (let k = 0; k < 2 * count; k += 2) {
            this.#printed.push(this.bytes(list[k], list[k + 1]).slice());
            sum += list[k + 1];
        }
        this.ints(written, 1)[0] = sum;
        return 0;
    }

    /** The lines printed since the last call. */
    takeLines() {
        if (this.#printed.length === 0) return [];
        const decoder = new TextDecoder();
        const text = this.#printed.map((part) => decoder.decode(part, { stream: true })).join('');
        this.#printed = [];
        return text.replace(/\n$/, '').split('\n');
    }
}

/** One call of an operation: what it owns in the module's memory, to be ended whatever happens. */
export class Call {
    #memory;
    #owned = [];
    lines = [];

    constructor(memory) {
        this.#memory = memory;
    }

    end() {
        for (const [free, address] of this.#owned) this.#memory.functions[free](address);
        this.#owned = [];
    }

    #own(free, address) {
        if (address === 0) throw new OrvexError(3);
        this.#owned.push([free, address]);
        return address;
    }

    /** A copy of an image argument. */
    image(value, name) {
        const { rows, cols, channels, data } = checkedImage(value, name);
        const { functions } = this.#memory;
        const address = this.#own('orvex_free_image', functions.orvex_image(rows, cols, channels));
        this.#memory.bytes(this.#memory.ints(address, 4)[3], data.length).set(data);
        return address;
    }

    imageOrNone(value, name) {
        return value === undefined || value === null ? 0 : this.image(value, name);
    }

    block(values) {
        const bytes = new Uint8Array(values.buffer, values.byteOffset, values.byteLength);
        const address = this.#own('orvex_free', this.#memory.functions.orvex_alloc(bytes.length));
        this.#memory.bytes(address, bytes.length).set(bytes);
        return address;
    }

    output() {
        return this.#own('orvex_free_image', this.#memory.functions.orvex_image(0, 0, 0));
    }

    labels() {
        return this.#own('orvex_free_labels', this.#memory.functions.orvex_labels());
    }

    /** Runs a function of the module. */
    run(name, ...words) {
        const code = this.#memory.functions[name](...words);
        this.lines = this.#memory.takeLines();
        if (code !== 0) throw new OrvexError(code, this.#memory.message(), this.lines);
    }

    number(k) {
        return this.#memory.number(k);
    }

    real(k) {
        return this.#memory.real(k);
    }

    /** A copy of an image that the module has made. */
    imageAt(address) {
        const { rows, cols, channels, data, length } = this.#matrixAt(address);
        return new Image(rows, cols, channels, this.#memory.bytes(data, length).slice());
    }

    labelsAt(address) {
        const { rows, cols, channels, data, length } = this.#matrixAt(address);
        return { rows, cols, channels, data: this.#memory.ints(data, length).slice() };
    }

    #matrixAt(address) {
        const [rows, cols, channels, data] = this.#memory.ints(address, 4);
        const length = rows * cols * channels;
        // An output of which no pixel is written may have a shape that no memory could hold.
        if (rows < 0 || cols < 0 || length > MOST_BYTES) throw new OrvexError(3, '', this.lines);
        return { rows, cols, channels, data, length };
    }

    /** The lists that words k and k + 1 of the results tell, of so many numbers an element. */
    listOfBytes(k) {
        return this.#memory.bytes(this.#listAt(k), this.number(k + 1)).slice();
    }

    listOfInts(k, size) {
        return this.#memory.ints(this.#listAt(k), size * this.number(k + 1)).slice();
    }

    listOfFloats(k, size) {
        return this.#memory.floats(this.#listAt(k), size * this.number(k + 1)).slice();
    }

    #listAt(k) {
        return this.#own('orvex_free', this.number(k));
    }
}

function checkedImage(value, name) {
    if (typeof value !== 'object' || value === null || !(value.data instanceof Uint8Array)) {
        throw new TypeError(`${name} must be an image {rows, cols, channels, data: Uint8Array}`);
    }
    const { rows, cols, channels, data } = value;
    for (const extent of [rows, cols, channels]) {
        if (!Number.isInteger(extent) || extent < 0) {
            throw new RangeError(
                `${name} has extents ${rows} x ${cols} x ${channels}: they must be whole numbers from 0 on`,
            );
        }
    }
    const bytes = rows * cols * channels;
    if (rows * cols > MOST_BYTES || bytes > MOST_BYTES) {
        throw new RangeError(
            `${name} of ${rows} x ${cols} x ${channels} is larger than any image of the library`,
        );
    }
    if (data.length !== bytes) {
        throw new RangeError(
            `${name} of ${rows} x ${cols} x ${channels} needs ${bytes} bytes of data, not ${data.length}`,
        );
    }
    return value;
}
