import com.orvex991.Box;
import com.orvex991.ImageException;
import com.orvex991.Nv21;
import com.orvex991.Page;
import com.orvex991.PageReader;
import java.io.DataInputStream;
import java.io.IOException;
import java.io.InputStream;
import java.io.PrintWriter;
import java.nio.ByteBuffer;
import java.nio.ReadOnlyBufferException;
import java.nio.file.Files;
import java.nio.file.Paths;
import java.util.ArrayList;
import java.util.Arrays;
import java.util.List;
import java.util.Locale;
import java.util.Random;
import java.util.concurrent.Callable;
import java.util.concurrent.ExecutorService;
import java.util.concurrent.Executors;
import java.util.concurrent.Future;
import java.util.zip.GZIPInputStream;

/**
 * Tests of the Java binding, on any JVM. usage: BindingTest FRAME.nv21.gz COLUMNS ROWS RESULTS; what was read from the
 * frame is written to RESULTS, as page_results.cpp does.
 */
public final class BindingTest {
    private static final int COLUMNS = 240;
    private static final int ROWS = 160;
    // No component is higher.
    private static final int TALL = 1000;
    // Two rows of print.
    private static final List<Box> LETTERS = Arrays.asList(new Box(40, 30, 9, 12), new Box(70, 31, 10, 13),
            new Box(100, 32, 11, 14), new Box(41, 90, 9, 15), new Box(80, 92, 10, 16));
    private static final Box SPECK = new Box(200, 120, 2, 2);

    private static void expect(boolean holds, String what) {
        if (!holds) throw new AssertionError(what);
    }

    private interface Attempt {
        void run();
    }

    private static <E extends Throwable> E expectThrown(Class<E> type, Attempt attempt, String what) {
        try {
            attempt.run();
        } catch (Throwable thrown) {
            if (type.isInstance(thrown)) return type.cast(thrown);
            throw new AssertionError(what + ": " + thrown);
        }
        throw new AssertionError(what + ": nothing was thrown");
    }

    private static boolean inked(int x, int y, boolean withSpeck) {
        for (Box box : LETTERS)
            if (x >= box.x && x < box.x + box.width && y >= box.y && y < box.y + box.height) return true;
        return withSpeck && x >= SPECK.x && x < SPECK.x + SPECK.width && y >= SPECK.y && y < SPECK.y + SPECK.height;
    }

    private static ByteBuffer drawnNv21(boolean withSpeck) {
        final ByteBuffer frame = ByteBuffer.allocateDirect(Nv21.bytes(COLUMNS, ROWS));
        for (int y = 0; y < ROWS; ++y)
            for (int x = 0; x < COLUMNS; ++x) frame.put((byte) (inked(x, y, withSpeck) ? 16 : 235));
        while (frame.hasRemaining()) frame.put((byte) 128);
        frame.flip();
        return frame;
    }

    private static ByteBuffer drawnBgr() {
        final ByteBuffer pixels = ByteBuffer.allocateDirect(3 * COLUMNS * ROWS);
        for (int y = 0; y < ROWS; ++y)
            for (int x = 0; x < COLUMNS; ++x)
                for (int k = 0; k < 3; ++k) pixels.put((byte) (inked(x, y, false) ? 0 : 255));
        pixels.flip();
        return pixels;
    }

    private static List<Box> sorted(List<Box> boxes) {
        final List<Box> copy = new ArrayList<>(boxes);
        copy.sort((a, b) -> a.y != b.y ? Integer.compare(a.y, b.y) : Integer.compare(a.x, b.x));
        return copy;
    }

    private static void expectDrawing(Page page, String what) {
        expect(page.columns == COLUMNS && page.rows == ROWS, what + ": extents");
        expect(sorted(page.components).equals(sorted(LETTERS)), what + ": components " + page.components);
        expect(page.textRows.equals(Arrays.asList(LETTERS.subList(0, 3), LETTERS.subList(3, 5))),
                what + ": rows " + page.textRows);
        expect(page.sharpness > 0, what + ": sharpness " + page.sharpness);
    }

    private static void framesAndPixelsGiveTheDrawnPage() {
        final Page gray = PageReader.readNv21(drawnNv21(false), COLUMNS, ROWS, PageReader.Kind.GRAY, 0, TALL);
        expectDrawing(gray, "NV21");
        // The weights of grey sum to 1014 / 1024, and (235, 128, 128) is 254 of 255.
        expect((gray.pixels[0] & 255) == 252, "white is " + (gray.pixels[0] & 255));
        expectDrawing(PageReader.readBgr(drawnBgr(), COLUMNS, ROWS, PageReader.Kind.GRAY, 0, TALL), "BGR");

        final Page binary = PageReader.readBgr(drawnBgr(), COLUMNS, ROWS, PageReader.Kind.BINARY, 0, TALL);
        expectDrawing(binary, "binary");
        for (int y = 0; y < ROWS; ++y)
            for (int x = 0; x < COLUMNS; ++x)
                expect(binary.pixels[y * COLUMNS + x] == (byte) (inked(x, y, false) ? 255 : 0),
                        "binary pixel " + x + ", " + y);
    }

    private static List<Box> componentsOf(ByteBuffer frame, int leastHeight, int mostHeight) {
        return sorted(PageReader.readNv21(frame, COLUMNS, ROWS, PageReader.Kind.GRAY, leastHeight, mostHeight)
                        .components);
    }

    private static void componentsOfOtherHeightsThanLettersAreLeftOut() {
        final ByteBuffer frame = drawnNv21(true);
        expect(componentsOf(frame, 0, TALL).contains(SPECK), "the speck is a component");
        expect(componentsOf(frame, SPECK.height, TALL).contains(SPECK), "as high as asked for");
        expect(componentsOf(frame, SPECK.height + 1, TALL).equals(LETTERS), "without the speck");
        expect(componentsOf(frame, 13, 15).equals(LETTERS.subList(1, 4)), "13 to 15 rows high");
    }

    private static void componentsAtTheBorderAreLeftOut() {
        for (int at : new int[] {5 * COLUMNS, 5 * COLUMNS + COLUMNS - 3, 5, (ROWS - 3) * COLUMNS + 5}) {
            final ByteBuffer frame = drawnNv21(false);
            for (int k = 0; k < 9; ++k) frame.put(at + k / 3 * COLUMNS + k % 3, (byte) 16);
            expect(componentsOf(frame, 0, TALL).equals(LETTERS), "at the border: byte " + at);
        }
    }

    private static void anEmptyPageHasNoComponents() {
        final ByteBuffer pixels = ByteBuffer.allocateDirect(3 * COLUMNS * ROWS);
        final Page page = PageReader.readBgr(pixels, COLUMNS, ROWS, PageReader.Kind.BINARY, 0, TALL);
        expect(page.components.isEmpty() && page.textRows.isEmpty() && page.sharpness == 0, "an even page is empty");
    }

    private static void whatTheLibraryThrowsBecomesAnImageException() {
        final ByteBuffer narrow = ByteBuffer.allocateDirect(3 * 100);
        final ImageException thrown = expectThrown(ImageException.class,
                () -> PageReader.readBgr(narrow, 1, 100, PageReader.Kind.GRAY, 0, TALL), "a page of one column");
        expect(thrown.code == 1, "its code is " + thrown.code);
        expect("code 1".equals(thrown.getMessage()), "its message is " + thrown.getMessage());
    }

    private static void argumentsAreCheckedBeforeTheNativeSideSeesThem() {
        final Class<IllegalArgumentException> refused = IllegalArgumentException.class;
        final ByteBuffer ten = ByteBuffer.allocateDirect(10);
        final PageReader.Kind kind = PageReader.Kind.GRAY;
        expectThrown(refused, () -> PageReader.readBgr(ByteBuffer.allocate(600), 10, 20, kind, 0, TALL), "heap buffer");
        expectThrown(refused, () -> PageReader.readBgr(ten, 2, 2, kind, 0, TALL), "10 bytes of 12");
        expectThrown(refused, () -> PageReader.readNv21(ten, 4, 2, kind, 0, TALL), "10 bytes of 12");
        expectThrown(refused, () -> PageReader.readNv21(ten, 3, 2, kind, 0, TALL), "odd columns");
        expectThrown(refused, () -> PageReader.readBgr(ten, 0, 2, kind, 0, TALL), "no columns");
        expectThrown(refused, () -> PageReader.readBgr(ten, -1, -3, kind, 0, TALL), "negative extents");
        // The bytes of the larger one wrap below 0 in 64 bits.
        for (int rows : new int[] {1 << 30, Integer.MAX_VALUE})
            expectThrown(refused, () -> PageReader.readBgr(ten, Integer.MAX_VALUE, rows, kind, 0, TALL), "huge BGR");
        expectThrown(refused, () -> PageReader.readNv21(ten, 1 << 30, Integer.MAX_VALUE, kind, 0, TALL), "huge NV21");

        final ByteBuffer two = ByteBuffer.allocateDirect(2);
        final Nv21.Plane luma = new Nv21.Plane(ten, 5, 2);
        final Nv21.Plane chroma = new Nv21.Plane(two, 1, 1);
        expectThrown(refused, () -> new Nv21.Plane(ten, 0, 1), "row stride 0");
        expectThrown(refused, () -> new Nv21.Plane(ten, 1, -1), "negative pixel stride");
        // Of 2 rows of 4 samples, 5 bytes and 2 bytes apart, the last is byte 11.
        expectThrown(refused, () -> Nv21.pack(luma, chroma, chroma, 4, 2, ByteBuffer.allocateDirect(12)), "luma");
        expectThrown(refused, () -> Nv21.pack(luma, chroma, chroma, 2, 2, two), "room");
        expectThrown(ReadOnlyBufferException.class, () -> Nv21.pack(
                luma, chroma, chroma, 2, 2, ByteBuffer.allocateDirect(6).asReadOnlyBuffer()), "read-only");
    }

    private static void buffersAreReadFromTheirPosition() {
        final ByteBuffer frame = drawnNv21(false);
        final ByteBuffer shifted = ByteBuffer.allocateDirect(frame.remaining() + 7);
        for (int k = 0; k < 7; ++k) shifted.put((byte) 3);
        shifted.put(frame).position(7);
        expectDrawing(PageReader.readNv21(shifted, COLUMNS, ROWS, PageReader.Kind.GRAY, 0, TALL), "from byte 7 on");
        expect(shifted.position() == 7, "the position stays");
        shifted.position(8);
        expectThrown(IllegalArgumentException.class,
                () -> PageReader.readNv21(shifted, COLUMNS, ROWS, PageReader.Kind.GRAY, 0, TALL), "one byte too far");
    }

    /** A plane of random bytes that ends with its last sample. */
    private static ByteBuffer samples(Random random, int columns, int rows, int rowStride, int pixelStride) {
        final byte[] bytes = new byte[(rows - 1) * rowStride + (columns - 1) * pixelStride + 1];
        random.nextBytes(bytes);
        return direct(bytes);
    }

    private static ByteBuffer direct(byte[] bytes) {
        final ByteBuffer buffer = ByteBuffer.allocateDirect(bytes.length);
        buffer.put(bytes).flip();
        return buffer;
    }

    private static void planesOfAnyStridesArePacked() {
        for (int seed = 0; seed < 300; ++seed) {
            final Random random = new Random(seed);
            final int columns = 2 * (1 + random.nextInt(20));
            final int rows = 1 + random.nextInt(20);
            final int halfColumns = columns / 2;
            final int halfRows = (rows + 1) / 2;
            final int yPixel = 1 + random.nextInt(3);
            final int uPixel = 1 + random.nextInt(4);
            final int vPixel = 1 + random.nextInt(4);
            final int yRow = columns * yPixel + random.nextInt(9);
            final int uRow = halfColumns * uPixel + random.nextInt(9);
            final int vRow = halfColumns * vPixel + random.nextInt(9);
            final ByteBuffer y = samples(random, columns, rows, yRow, yPixel);
            final ByteBuffer u = samples(random, halfColumns, halfRows, uRow, uPixel);
            final ByteBuffer v = samples(random, halfColumns, halfRows, vRow, vPixel);

            final byte[] expected = new byte[Nv21.bytes(columns, rows)];
            for (int row = 0; row < rows; ++row)
                for (int x = 0; x < columns; ++x) expected[row * columns + x] = y.get(row * yRow + x * yPixel);
            for (int row = 0; row < halfRows; ++row)
                for (int x = 0; x < halfColumns; ++x) {
                    final int pair = (rows + row) * columns + 2 * x;
                    expected[pair] = v.get(row * vRow + x * vPixel);
                    expected[pair + 1] = u.get(row * uRow + x * uPixel);
                }

            final byte[] guarded = new byte[expected.length + 8];
            Arrays.fill(guarded, (byte) 77);
            final ByteBuffer out = direct(guarded);
            out.position(4);
            Nv21.pack(new Nv21.Plane(y, yRow, yPixel), new Nv21.Plane(u, uRow, uPixel),
                    new Nv21.Plane(v, vRow, vPixel), columns, rows, out);
            System.arraycopy(expected, 0, guarded, 4, expected.length);
            expect(out.position() == 4, "the position stays");
            expect(out.rewind().equals(ByteBuffer.wrap(guarded)), "packed with seed " + seed);
        }
    }

    /** As cameras give them: one block of (V, U) pairs, in which U begins a byte after V. */
    private static void interleavedChromaIsPacked() {
        final ByteBuffer luma = direct(new byte[] {1, 2, 3, 4, 0, 0, 5, 6, 7, 8});
        final byte[] pairs = {11, 12, 13, 14};
        final ByteBuffer v = direct(pairs);
        final ByteBuffer u = direct(pairs);
        u.position(1);
        final ByteBuffer out = ByteBuffer.allocateDirect(12);
        Nv21.pack(new Nv21.Plane(luma, 6, 1), new Nv21.Plane(u, 6, 2), new Nv21.Plane(v, 6, 2), 4, 2, out);
        expect(out.equals(ByteBuffer.wrap(new byte[] {1, 2, 3, 4, 5, 6, 7, 8, 11, 12, 13, 14})), "interleaved");
    }

    private static void threadsReadAtTheSameTime() throws Exception {
        final ByteBuffer frame = drawnNv21(false);
        final ByteBuffer narrow = ByteBuffer.allocateDirect(3 * 100);
        final ExecutorService threads = Executors.newFixedThreadPool(4);
        final List<Callable<Void>> calls = new ArrayList<>();
        for (int k = 0; k < 40; ++k) {
            calls.add(() -> {
                expectDrawing(PageReader.readNv21(frame, COLUMNS, ROWS, PageReader.Kind.GRAY, 0, TALL), "of a thread");
                expectThrown(ImageException.class,
                        () -> PageReader.readBgr(narrow, 1, 100, PageReader.Kind.GRAY, 0, TALL), "in a thread");
                return null;
            });
        }
        for (Future<Void> call : threads.invokeAll(calls)) call.get();
        threads.shutdown();
    }

    private static ByteBuffer unpacked(String path, int bytes) throws IOException {
        final byte[] frame = new byte[bytes];
        try (InputStream file = Files.newInputStream(Paths.get(path));
                DataInputStream data = new DataInputStream(new GZIPInputStream(file))) {
            data.readFully(frame);
        }
        return direct(frame);
    }

    private static void write(PrintWriter out, Page page) {
        long sum = 0;
        for (byte pixel : page.pixels) sum = (sum * 31 + (pixel & 255)) & 0xffffffffL;
        out.printf(Locale.ROOT, "pixels %d x %d sum %d%n", page.columns, page.rows, sum);
        out.printf(Locale.ROOT, "sharpness %08x%n", Float.floatToRawIntBits(page.sharpness));
        for (Box box : page.components) out.println("component " + box);
        for (List<Box> row : page.textRows) {
            out.println("row of " + row.size());
            for (Box box : row) out.println(box);
        }
    }

    public static void main(String[] arguments) throws Exception {
        framesAndPixelsGiveTheDrawnPage();
        componentsOfOtherHeightsThanLettersAreLeftOut();
        componentsAtTheBorderAreLeftOut();
        anEmptyPageHasNoComponents();
        whatTheLibraryThrowsBecomesAnImageException();
        argumentsAreCheckedBeforeTheNativeSideSeesThem();
        buffersAreReadFromTheirPosition();
        planesOfAnyStridesArePacked();
        interleavedChromaIsPacked();
        threadsReadAtTheSameTime();

        final int columns = Integer.parseInt(arguments[1]);
        final int rows = Integer.parseInt(arguments[2]);
        final ByteBuffer frame = unpacked(arguments[0], Nv21.bytes(columns, rows));
        try (PrintWriter out = new PrintWriter(arguments[3], "UTF-8")) {
            write(out, PageReader.readNv21(frame, columns, rows, PageReader.Kind.GRAY, 8, 40));
            write(out, PageReader.readNv21(frame, columns, rows, PageReader.Kind.BINARY, 0, TALL));
        }
    }
}
