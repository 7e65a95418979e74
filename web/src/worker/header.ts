/** Extents of PNG and JPEG files, read from their headers before anybody decodes them. */

export interface Extents {
    readonly cols: number;
    readonly rows: number;
}

/** Of decoded pictures; 64 megapixels take 192 MB as B, G, R. */
export const MOST_PIXELS = 64_000_000;

const PNG_SIGNATURE = [0x89, 0x50, 0x4e, 0x47, 0x0d, 0x0a, 0x1a, 0x0a];

/** Why a file is not worth decoding, in words for the user; null where nothing speaks against it. */
export function refusal(bytes: Uint8Array): string | null {
    if (bytes.length === 0) return 'the file is empty';
    const isJpeg = bytes[0] === 0xff && bytes[1] === 0xd8;
    const extents = isJpeg
        ? jpegExtents(bytes)
        : PNG_SIGNATURE.every((byte, k) => bytes[k] === byte)
          ? pngExtents(bytes)
          : null;
    if (extents) return tooLarge(extents);
    return isJpeg ? 'the JPEG has no picture in it' : null;
}

export function tooLarge({ cols, rows }: Extents): string | null {
    if (cols * rows <= MOST_PIXELS) return null;
    return `${cols} × ${rows} pixels are more than the ${MOST_PIXELS / 1e6} megapixels that this page takes`;
}

/** Whether a JPEG ends before its picture does: its end is marked, and pixels are coded without that mark. */
export function cutOff(bytes: Uint8Array): boolean {
    if (bytes[0] !== 0xff || bytes[1] !== 0xd8) return false;
    const scan = segments(bytes).find(({ marker }) => marker === 0xda);
    if (!scan) return true;
    for (let at = bytes.length - 2; at >= scan.at; --at)
        if (bytes[at] === 0xff && bytes[at + 1] === 0xd9) return false;
    return true;
}

function pngExtents(bytes: Uint8Array): Extents | null {
    if (bytes.length < 24) return null;
    const view = new DataView(bytes.buffer, bytes.byteOffset, bytes.byteLength);
    return { cols: view.getUint32(16), rows: view.getUint32(20) };
}

/** Frames begin with C0 .. CF, of which three are tables. */
function jpegExtents(bytes: Uint8Array): Extents | null {
    const frame = segments(bytes).find(
        ({ marker }) => marker >= 0xc0 && marker <= 0xcf && ![0xc4, 0xc8, 0xcc].includes(marker),
    );
    if (!frame || frame.at + 7 > bytes.length) return null;
    const pair = (at: number): number => bytes[at]! * 256 + bytes[at + 1]!;
    return { rows: pair(frame.at + 3), cols: pair(frame.at + 5) };
}

/** Where the length of each segment stands, up to the first scan. */
function segments(bytes: Uint8Array): { marker: number; at: number }[] {
    const found: { marker: number; at: number }[] = [];
    for (let at = 2; at + 4 <= bytes.length && bytes[at] === 0xff; ) {
        const marker = bytes[at + 1]!;
        if (marker === 0xff) {
            ++at; // padding
            continue;
        }
        found.push({ marker, at: at + 2 });
        if (marker === 0xda) break;
        at += 2 + bytes[at + 2]! * 256 + bytes[at + 3]!;
    }
    return found;
}
