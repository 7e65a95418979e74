package com.orvex991;

import java.nio.ByteBuffer;
import java.nio.ReadOnlyBufferException;

/** Camera frames as {@link PageReader} takes them. */
public final class Nv21 {
    /** One plane of a camera's image: the sample of column x in row y is at y * rowStride + x * pixelStride. */
    public static final class Plane {
        final ByteBuffer samples;
        final int rowStride;
        final int pixelStride;

        /**
         * @param samples direct, samples from its position on; the last row may end with its last sample
         * @param rowStride bytes, above 0
         * @param pixelStride bytes, above 0
         */
        public Plane(ByteBuffer samples, int rowStride, int pixelStride) {
            if (rowStride < 1 || pixelStride < 1) throw new IllegalArgumentException("a stride is below 1");
            this.samples = samples;
            this.rowStride = rowStride;
            this.pixelStride = pixelStride;
        }

        private ByteBuffer samples(String name, int columns, int rows) {
            final long last = (rows - 1L) * rowStride + (columns - 1L) * pixelStride;
            return Buffers.direct(samples, name, last + 1);
        }
    }

    static {
        System.loadLibrary("orvex_991_jni");
    }

    private Nv21() {}

    /**
     * Bytes of a frame.
     *
     * @throws IllegalArgumentException unless both extents are above 0, columns even, and the bytes below 2^31
     */
    public static int bytes(int columns, int rows) {
        if (columns % 2 != 0) throw new IllegalArgumentException("an odd number of columns: " + columns);
        return Buffers.extent(columns, rows, columns * (rows + (rows + 1L) / 2));
    }

    /**
     * Packs three planes, whatever their strides, into one frame without gaps.
     *
     * @param y columns x rows samples
     * @param u samples for half of both extents, rounded up
     * @param v as u; the two may be interleaved in one block of memory
     * @param out direct; filled from its position on with {@link #bytes} bytes, which none of the planes may share.
     *     Position and limit stay
     * @throws IllegalArgumentException for a buffer that is not direct or too short, and for extents out of range;
     *     nothing is written then
     * @throws ReadOnlyBufferException when out cannot be written
     */
    public static void pack(Plane y, Plane u, Plane v, int columns, int rows, ByteBuffer out) {
        final ByteBuffer frame = Buffers.direct(out, "out", bytes(columns, rows));
        if (out.isReadOnly()) throw new ReadOnlyBufferException();
        final int halfColumns = columns / 2;
        final int halfRows = rows / 2 + rows % 2;
        pack(y.samples("y", columns, rows), y.rowStride, y.pixelStride,
                u.samples("u", halfColumns, halfRows), u.rowStride, u.pixelStride,
                v.samples("v", halfColumns, halfRows), v.rowStride, v.pixelStride, columns, rows, frame);
    }

    private static native void pack(ByteBuffer y, int yRowStride, int yPixelStride, ByteBuffer u, int uRowStride,
            int uPixelStride, ByteBuffer v, int vRowStride, int vPixelStride, int columns, int rows, ByteBuffer out);
}
