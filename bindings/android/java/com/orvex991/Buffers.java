package com.orvex991;

import java.nio.ByteBuffer;

/** Checks before native methods take over, which trust what they get. */
final class Buffers {
    private Buffers() {}

    /** What lies from the position to the limit, by itself, so that its address is that of the position. */
    static ByteBuffer direct(ByteBuffer buffer, String name, long bytes) {
        if (!buffer.isDirect()) throw new IllegalArgumentException(name + " is not a direct buffer");
        if (buffer.remaining() < bytes)
            throw new IllegalArgumentException(name + " holds " + buffer.remaining() + " bytes of " + bytes);
        return buffer.slice();
    }

    /** The bytes of an image as an int. Whether they fit is asked of the pixels, too: far beyond, bytes may wrap. */
    static int extent(int columns, int rows, long bytes) {
        final long most = Integer.MAX_VALUE;
        if (columns < 1 || rows < 1 || (long) columns * rows > most || bytes > most)
            throw new IllegalArgumentException(columns + " x " + rows + " pixels");
        return (int) bytes;
    }
}
