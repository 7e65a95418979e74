/**
 * The image operations of orvex_991, by the names of its header jni/orvex_991/cv_imgproc.h, which is the reference:
 * shapes, ranges, errors, printed lines, cost.
 *
 * Arguments come in the header's order, without those that are mere outputs. One output is what a method returns;
 * several are returned as an object, under the header's names. Arguments are never written, and what is returned
 * belongs to the caller: images are copied into the module's memory and out of it.
 *
 * Every operation throws
 * - OrvexError where the library throws,
 * - TypeError for an argument of another type,
 * - RangeError for a number that is no 32-bit whole number, for an image whose data is not as long as its shape says,
 *   and when JavaScript has no memory for a result.
 */

/** A pixel (row, col) begins at data[(row * cols + col) * channels]; 3 channels are B, G, R. */
export interface ImageLike {
    readonly rows: number;
    readonly cols: number;
    readonly channels: number;
    readonly data: Uint8Array;
}

/** What operations take and return; any object with these fields will do as an argument. */
export class Image implements ImageLike {
    readonly rows: number;
    readonly cols: number;
    readonly channels: number;
    readonly data: Uint8Array;
    /** @param data  is kept, not copied; zeros when left out */
    constructor(rows: number, cols: number, channels: number, data?: Uint8Array);
    /** BGR of a canvas' pixels; alpha is dropped. */
    static fromImageData(imageData: {
        readonly width: number;
        readonly height: number;
        readonly data: Uint8Array | Uint8ClampedArray;
    }): Image;
    /**
     * For a canvas: opaque, grey or in colours. In browsers and workers alone; Node has no ImageData.
     * @throws RangeError for other than 1 or 3 channels; the browser's error for an image without pixels
     */
    static toImageData(image: ImageLike): ImageData;
    /** The bytes of toImageData, everywhere. */
    static toRgba(image: ImageLike): Uint8ClampedArray;
}

/** Component numbers, from 1; 0 is background. */
export interface Labels {
    readonly rows: number;
    readonly cols: number;
    readonly channels: 1;
    readonly data: Int32Array;
}

/** x is the column, y the row. */
export interface Point {
    x: number;
    y: number;
}

export interface Size {
    width: number;
    height: number;
}

/** Columns x .. x + width - 1 and rows y .. y + height - 1. */
export interface Rect {
    x: number;
    y: number;
    width: number;
    height: number;
}

export interface RotatedRect {
    /** Corners in order around it: 4, or none when no rectangle was found. */
    pts: Point[];
    /** Mean of the corners. */
    center: Point;
    /** Length of the side from corner 0 to corner 1, truncated. */
    width: number;
    /** Length of the side from corner 1 to corner 2, truncated. */
    height: number;
    /** Direction of the side from corner 0 to corner 1 in radians, y pointing up. */
    angle: number;
}

/** How warps and resizes sample; any other number is legal and gives an all-zero output. */
export const INTERP_LINEAR: 0;

/** Operations of morphologyBinary. */
export const MORPH_DILATE: 0;
export const MORPH_ERODE: 1;
export const MORPH_OPEN: 2;
export const MORPH_CLOSE: 3;

/** What the library throws. */
export class OrvexError extends Error {
    /**
     * 1 an input check failed; 2 an operation failed, or a detector found nothing; 3 memory could not be had, or an
     * image has not the pixels that are read; 4 an index is out of range, or more components than can be numbered.
     */
    readonly code: 1 | 2 | 3 | 4;
    /** What the library says, else the condition that had to hold, else what the code means. */
    readonly message: string;
    /** What the library says: often nothing. */
    readonly reason: string;
    /** What the call printed. */
    readonly lines: string[];
    constructor(code: 1 | 2 | 3 | 4, reason?: string, lines?: string[]);
}

export interface LoadOptions {
    /**
     * Whether to take the module with 128-bit vectors. Left out: where the engine has them. Results are the same.
     */
    simd?: boolean;
}

/**
 * Fetches and compiles a module, with a memory of its own. Each worker loads its own.
 * @throws TypeError when the file cannot be fetched; Error when the server refuses it; WebAssembly.CompileError where
 *     the engine has not what the module needs: exceptions, and with `simd: true` vectors
 */
export function load(options?: LoadOptions): Promise<Orvex>;

/** The operations. */
export interface Orvex {
    /** Takes the lines that a call has printed, once it has ended, well or not. Null, at first, drops them. */
    onLines: ((lines: string[]) => void) | null;

    /** Bytes of the module's memory. It grows when a call needs more, never shrinks, and ends with this object. */
    readonly memorySize: number;

    // ---- Colour conversion ----

    bgr2gray(src: ImageLike): Image;
    /** @throws RangeError for a frame that is too short, and for extents below 0 */
    yuv2bgr(yuv: Uint8Array, rows: number, cols: number): Image;
    bgr2hsv(src: ImageLike): Image;

    // ---- Statistics ----

    equalizeHist(src: ImageLike): Image;
    hist(src: ImageLike): Float32Array;
    meanStdDev(src: ImageLike): { mean: number; stddev: number };
    minVal(src: ImageLike): number;
    maxVal(src: ImageLike): number;
    countNonZero(src: ImageLike): number;
    countNonZeroRate(src: ImageLike): number;

    // ---- Thresholds ----

    otsu(src: ImageLike): number;
    otsu(src: ImageLike, mask: ImageLike): number;
    thresholdSeg(src: ImageLike, threshold: number): Image;
    /** low_th and high_th are 0 and 255; type is 8, or 8 | 1 to invert. */
    threshold(
        src: ImageLike,
        low_th: number,
        high_th: number,
        type: number,
        mask?: ImageLike,
    ): { threshold: number; dst: Image };
    adaptiveThreshold(src: ImageLike, block_size: number, std_ratio: number, inverse?: boolean): Image;

    // ---- Quarter turns and mirroring ----

    rot90ClockWise_FlipLR(src: ImageLike, n: number, f: number): Image;
    flipLR(src: ImageLike): Image;
    rot90ClockWise(src: ImageLike, n: number): Image;
    rot90ClockWise(src: Rect, img_size: Size, n: number): Rect;
    rot90ClockWise(pt: Point, size: Size, n: number): Point;
    rot90AntiClockWise(src: ImageLike, n: number): Image;
    rot90AntiClockWise(src: Rect, img_size: Size, n: number): Rect;
    rot90AntiClockWise(pt: Point, size: Size, n: number): Point;

    // ---- Resize and affine transforms: a matrix is 6 numbers, row by row ----

    resize(src: ImageLike, out_size: Size, interp?: number): Image;
    resize(src: ImageLike, scale: number, interp?: number): Image;
    getRotationMatrix2D(center: Point, angle: number, scale: number): Float32Array;
    warpAffine(src: ImageLike, trans_matrix: Float32Array, out_size: Size, interp?: number): Image;
    /** @param mask  one byte a pixel of the output at least; a copy of it is returned, with the marks */
    warpAffine(
        src: ImageLike,
        trans_matrix: Float32Array,
        out_size: Size,
        interp: number,
        mask: ImageLike,
    ): { dst: Image; mask: Image };
    pointAffine(pt: Point, trans_mat: Float32Array, scale: number, origin: Point): Point;
    rectAffine(src: Rect, trans_mat: Float32Array): Rect;
    checkRectInMat(size: Size, rect: Rect): Rect;

    // ---- Binary morphology ----

    dilateBinary(src: ImageLike, size: Size): Image;
    erodeBinary(src: ImageLike, size: Size): Image;
    openBinary(src: ImageLike, size: Size): Image;
    closeBinary(src: ImageLike, size: Size): Image;
    /** type is one of the MORPH_ constants. */
    morphologyBinary(src: ImageLike, size: Size, type: number): Image;
    dilateRect(src: Rect, size: Size): Rect;

    // ---- Grey morphology ----

    dilateGray(src: ImageLike, size: Size): Image;
    erodeGray(src: ImageLike, size: Size): Image;
    morphGradient(src: ImageLike, size: Size): Image;

    // ---- Components ----

    bwlabel(src: ImageLike): { dst: Labels; num: number };
    connectdComponent(src: ImageLike, points?: false): Rect[];
    connectdComponent(src: ImageLike, points: true): { rects: Rect[]; points: Point[][] };
    divideComponentsToRows(rects: readonly Rect[]): Rect[][];

    // ---- Shapes ----

    convexHull(points: readonly Point[]): Point[];
    minAreaRect(mat: ImageLike): RotatedRect;
    minAreaRect(points: readonly Point[]): RotatedRect;
    getRotatedRectAngle(rotate_rect: RotatedRect): number;
    calcLineDegree(p1: Point, p2: Point): number;

    // ---- Detectors ----

    getSharpness(src: ImageLike): number;
    getSharpness(src: ImageLike, mask: ImageLike): number;
    saliencyDetect(src: ImageLike, mask: ImageLike): { dst: Image; level_saliency: Uint8Array };
    redColorDetect(src: ImageLike, relaxed?: boolean): Image;

    // ---- Pages, as docprep levels them ----

    /**
     * The angle in degrees by which rows of text fall to the right, -15 .. 15: levelPage by it makes them level. 0 for
     * too little text, and where no angle brings it into rows.
     * @param binary  print is not 0, paper 0; not empty
     */
    estimateSkew(binary: ImageLike): number;
    /**
     * An image turned anticlockwise about its centre, as large as holds all of it and white around it. A copy for less
     * than 0.1 degrees, to which warping would bring nothing but softness.
     * @param src  not empty, of any channels
     */
    levelPage(src: ImageLike, degrees: number): Image;
}
