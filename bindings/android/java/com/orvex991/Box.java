package com.orvex991;

/** A rectangle of pixels: columns x .. x + width - 1 and rows y .. y + height - 1. */
public final class Box {
    public final int x;
    public final int y;
    public final int width;
    public final int height;

    public Box(int x, int y, int width, int height) {
        this.x = x;
        this.y = y;
        this.width = width;
        this.height = height;
    }

    @Override
    public boolean equals(Object other) {
        if (!(other instanceof Box)) return false;
        final Box box = (Box) other;
        return x == box.x && y == box.y && width == box.width && height == box.height;
    }

    @Override
    public int hashCode() {
        return ((x * 31 + y) * 31 + width) * 31 + height;
    }

    /** "x y width height" */
    @Override
    public String toString() {
        return x + " " + y + " " + width + " " + height;
    }
}
