package com.orvex991;

import java.util.ArrayList;
import java.util.Collections;
import java.util.List;

/** What {@link PageReader} made of a photograph. */
public final class Page {
    public final int columns;
    public final int rows;
    /** The pixel of column x in row y is at index y * columns + x; bytes are unsigned. */
    public final byte[] pixels;
    /** Of the grey page as a whole, 0 for a uniform one; higher is sharper. To compare frames of one scene. */
    public final float sharpness;
    /** The components of dark print that may be letters, larger areas first. */
    public final List<Box> components;
    /** The components by rows of text: from top to bottom, and in each from left to right. */
    public final List<List<Box>> textRows;

    /** Called by the native side: boxes are 4 numbers each, and those of all rows follow each other. */
    Page(int columns, int rows, byte[] pixels, float sharpness, int[] components, int[] rowLengths, int[] rowBoxes) {
        this.columns = columns;
        this.rows = rows;
        this.pixels = pixels;
        this.sharpness = sharpness;
        this.components = boxes(components, 0, components.length / 4);
        final List<List<Box>> textRows = new ArrayList<>(rowLengths.length);
        int first = 0;
        for (int length : rowLengths) {
            textRows.add(boxes(rowBoxes, first, length));
            first += length;
        }
        this.textRows = Collections.unmodifiableList(textRows);
    }

    private static List<Box> boxes(int[] numbers, int first, int count) {
        final List<Box> boxes = new ArrayList<>(count);
        for (int k = 4 * first; k < 4 * (first + count); k += 4)
            boxes.add(new Box(numbers[k], numbers[k + 1], numbers[k + 2], numbers[k + 3]));
        return Collections.unmodifiableList(boxes);
    }
}
