package com.orvex991;

import java.nio.ByteBuffer;

/**
 * From a photograph of dark print on light paper to its rows of text.
 *
 * <p>Methods keep no state: threads may call them at the same time, as long as nobody writes to the buffers meanwhile.
 * The library prints lines on the process's standard output, which Android drops.
 */
public final class PageReader {
    /** The pixels of a page. */
    public enum Kind {
        /** Grey levels as photographed. */
        GRAY,
        /** 255 on dark print, 0 elsewhere. */
        BINARY
    }

    static {
        System.loadLibrary("orvex_991_jni");
    }

    private PageReader() {}

    /**
     * Reads a camera frame: a plane of luma, then a pair (V, U) for each 2 x 2 block.
     *
     * @param frame direct; from its position to its limit at least {@link Nv21#bytes} bytes, which are only read
     * @param columns even, above 0
     * @param rows above 0
     * @param leastHeight components of fewer rows, such as specks, are left out; so are those that touch the border of
     *     the photograph (desks, shadows), since one of them would join rows of text
     * @param mostHeight components of more rows, such as frames, are left out, too
     * @throws IllegalArgumentException for a buffer that is not direct or too short, and for extents out of range
     * @throws ImageException code 1 for a page too narrow to measure its sharpness, code 3 without memory
     */
    public static Page readNv21(ByteBuffer frame, int columns, int rows, Kind kind, int leastHeight, int mostHeight) {
        final ByteBuffer data = Buffers.direct(frame, "frame", Nv21.bytes(columns, rows));
        return read(data, true, columns, rows, kind == Kind.BINARY, leastHeight, mostHeight);
    }

    /**
     * Reads pixels of three bytes, B, G, R, row by row without gaps. Otherwise as {@link #readNv21}, but that columns
     * may be odd.
     */
    public static Page readBgr(ByteBuffer pixels, int columns, int rows, Kind kind, int leastHeight, int mostHeight) {
        final ByteBuffer data = Buffers.direct(pixels, "pixels", Buffers.extent(columns, rows, 3L * columns * rows));
        return read(data, false, columns, rows, kind == Kind.BINARY, leastHeight, mostHeight);
    }

    private static native Page read(
            ByteBuffer data, boolean nv21, int columns, int rows, boolean binary, int leastHeight, int mostHeight);
}
