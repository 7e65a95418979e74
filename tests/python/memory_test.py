"""A dense input is not copied, an output is allocated once, and nothing is left behind."""
import gc
import resource
import sys
import tracemalloc
import unittest
import weakref

import numpy as np

import orvex_991 as orvex

FRAME = np.random.default_rng(7).integers(0, 256, (600, 800, 3), np.uint8)
GREY = FRAME[..., 0].copy()
BINARY = (GREY > 250).astype(np.uint8) * 255

# One call of each way in which arguments come in and results go out.
CALLS = {
    "an image": lambda: orvex.bgr2gray(FRAME),
    "a number": lambda: orvex.otsu(GREY),
    "with a mask": lambda: orvex.otsu(GREY, BINARY),
    "into a destination": lambda: orvex.thresholdSeg(GREY, 9, dst=FRAME),
    "a pair": lambda: orvex.threshold(GREY, mask=BINARY),
    "labels": lambda: orvex.bwlabel(BINARY[:60]),
    "a list of arrays": lambda: orvex.connectdComponent(BINARY[:60], True),
    "floats": lambda: orvex.hist(GREY),
    "a matrix": lambda: orvex.getRotationMatrix2D((1, 2), 3, 4),
    "tuples": lambda: orvex.checkRectInMat((9, 9), (1, 2, 3, 4)),
    "points": lambda: orvex.convexHull(np.zeros((5, 2), np.int32)),
    "strides": lambda: orvex.bgr2gray(FRAME[::-1, ::2]),
    "a frame": lambda: orvex.yuv2bgr(GREY, 400, 800),
}
FAILURES = {
    "a check": lambda: orvex.otsu(FRAME),
    "no memory": lambda: orvex.resize(GREY, (2**20, 2**20)),
    "a type": lambda: orvex.otsu(3),
    "a shape": lambda: orvex.otsu(GREY[0]),
}


def resident_bytes():
    with open("/proc/self/statm", encoding="ascii") as file:
        return int(file.read().split()[1]) * resource.getpagesize()


def fail(call):
    try:
        call()
    except (orvex.Error, TypeError, ValueError):
        pass


class Memory(unittest.TestCase):
    def python_peak(self, call):
        """Bytes that Python and numpy have allocated at once during a call; what C++ allocates is not seen."""
        call()
        tracemalloc.start()
        try:
            kept = call()
            peak = tracemalloc.get_traced_memory()[1]
            del kept
        finally:
            tracemalloc.stop()
        return peak

    def test_a_dense_input_is_not_copied_and_an_output_not_either(self):
        for name in ("an image", "a number", "with a mask", "into a destination", "a pair", "floats", "a frame"):
            with self.subTest(call=name):
                self.assertLess(self.python_peak(CALLS[name]), 10_000)

    def test_an_input_with_strides_is_copied_once(self):
        half = FRAME[::-1, ::2].size
        peak = self.python_peak(CALLS["strides"])
        self.assertTrue(half <= peak < half + 10_000, peak)

    def test_the_block_of_a_result_is_the_library_s(self):
        for made in (orvex.bgr2gray(FRAME), orvex.hist(GREY), orvex.connectdComponent(BINARY)):
            self.assertFalse(made.flags.owndata)
            self.assertEqual(type(made.base).__name__, "PyCapsule")
            self.assertEqual(sys.getrefcount(made.base), 2)

    def test_large_calls_need_room_for_their_result_alone(self):
        # The largest resident size of the process only grows, so the first such call shows what it needs.
        large = np.full((6000, 6000), 7, np.uint8)
        before = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024
        kept = orvex.thresholdSeg(large, 9)
        after = resource.getrusage(resource.RUSAGE_SELF).ru_maxrss * 1024
        self.assertLess(after - before, kept.size * 3 // 2)

    def test_a_result_lives_as_long_as_somebody_holds_it(self):
        made = orvex.flipLR(GREY)
        part = made[5:7]
        expected = part.copy()
        del made
        gc.collect()
        for _ in range(20):
            orvex.flipLR(FRAME[..., 1].copy())
        np.testing.assert_array_equal(part, expected)

    def test_arguments_are_let_go(self):
        for call in (lambda array: orvex.bgr2gray(array), lambda array: fail(lambda: orvex.otsu(array)),
                     lambda array: orvex.bgr2gray(array[::-1])):
            array = FRAME.copy()
            call(array)
            watch = weakref.ref(array)
            del array
            self.assertIsNone(watch())

    def test_ten_thousand_calls_leave_no_memory_behind(self):
        small = GREY[:20, :30].copy()
        calls = [lambda: orvex.bgr2gray(small), lambda: orvex.otsu(small), lambda: orvex.threshold(small, mask=small),
                 lambda: orvex.connectdComponent(small, True), lambda: orvex.hist(small[::-1]),
                 lambda: orvex.checkRectInMat((9, 9), (1, 2, 3, 4)), lambda: orvex.minAreaRect(small),
                 lambda: fail(lambda: orvex.otsu(FRAME)), lambda: fail(lambda: orvex.otsu(GREY[0]))]

        def run(times):
            for _ in range(times):
                with orvex.log():
                    for call in calls:
                        call()

        run(200)
        gc.collect()
        blocks, before = sys.getallocatedblocks(), resident_bytes()
        run(10_000 // len(calls) + 1)
        gc.collect()
        self.assertLess(sys.getallocatedblocks() - blocks, 200)
        self.assertLess(resident_bytes() - before, 2_000_000)

    def test_references_are_balanced(self):
        watched = [None, FRAME, GREY, orvex.Error, orvex.Point, orvex.RotatedRect, np.dtype(np.uint8)]
        calls = [*CALLS.values(), *(lambda call=call: fail(call) for call in FAILURES.values())]
        for call in calls:
            call()
        gc.collect()
        before = [sys.getrefcount(value) for value in watched]
        for _ in range(50):
            for call in calls:
                call()
        gc.collect()
        for value, count in zip(watched, before):
            with self.subTest(value=type(value)):
                self.assertLess(abs(sys.getrefcount(value) - count), 20)


if __name__ == "__main__":
    unittest.main()
