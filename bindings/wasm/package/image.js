export class Image {
    constructor(rows, cols, channels, data = new Uint8Array(rows * cols * channels)) {
        this.rows = rows;
        this.cols = cols;
        this.channels = channels;
        this.data = data;
    }

    static fromImageData(imageData) {
        const { width, height, data } = imageData;
        const image = new Image(height, width, 3);
        const bgr = image.data;
        for (let from = 0, to = 0; to < bgr.length; from += 4, to += 3) {
            bgr[to] = data[from + 2];
            bgr[to + 1] = data[from + 1];
            bgr[to + 2] = data[from];
        }
        return image;
    }

    /** The bytes of an ImageData, also where there is none, as in Node. */
    static toRgba(image) {
        const { rows, cols, channels, data } = image;
        if (channels !== 1 && channels !== 3) {
            throw new RangeError(`an image of ${channels} channels has no colours: it must have 1 or 3`);
        }
        const rgba = new Uint8ClampedArray(rows * cols * 4);
        const blue = 0;
        const green = channels === 3 ? 1 : 0;
        const red = channels === 3 ? 2 : 0;
        for (let from = 0, to = 0; to < rgba.length; from += channels, to += 4) {
            rgba[to] = data[from + red];
            rgba[to + 1] = data[from + green];
            rgba[to + 2] = data[from + blue];
            rgba[to + 3] = 255;
        }
        return rgba;
    }

    static toImageData(image) {
        return new ImageData(Image.toRgba(image), image.cols, image.rows);
    }
}
