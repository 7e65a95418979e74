"""Arguments of every layout give what a dense copy gives and are never written; what does not fit is named."""
import unittest

import numpy as np

import orvex_991 as orvex

IMAGE = np.random.default_rng(991).integers(0, 256, (24, 31, 3), np.uint8)


def layouts(dense):
    """The same pixels in other orders of memory."""
    wide = np.zeros((dense.shape[0], dense.shape[1] * 2, *dense.shape[2:]), np.uint8)
    wide[:, ::2] = dense
    framed = np.pad(dense, [(2, 3), (4, 5)] + [(0, 0)] * (dense.ndim - 2), constant_values=99)
    read_only = dense.copy()
    read_only.flags.writeable = False
    return {
        "every second column": wide[:, ::2],
        "a part of a larger image": framed[2:-3, 4:-5],
        "upside down": dense[::-1].copy()[::-1],
        "mirrored": dense[:, ::-1].copy()[:, ::-1],
        "transposed": dense.swapaxes(0, 1).copy().swapaxes(0, 1),
        "columns first": np.asfortranarray(dense),
        "read-only": read_only,
        "on bytes": np.frombuffer(dense.tobytes(), np.uint8).reshape(dense.shape),
        "without strides": np.broadcast_to(dense[:1, :1], dense.shape) if (dense == dense[0, 0]).all() else dense,
    }


class Arrays(unittest.TestCase):
    def test_any_strides_give_what_a_dense_array_gives(self):
        grey, mask = IMAGE[..., 1].copy(), (IMAGE[..., 2] > 100).astype(np.uint8)
        calls = {
            "colour": (IMAGE, orvex.bgr2gray),
            "grey": (grey, lambda array: orvex.dilateGray(array, (3, 5))),
            "mask": (mask, lambda array: np.array(orvex.otsu(grey, array))),
            "destination": (IMAGE, lambda array: orvex.thresholdSeg(grey, 100, dst=array)),
            "frame": (grey, lambda array: orvex.yuv2bgr(array, 14, 31)),
            "constant": (IMAGE * 0 + 7, orvex.bgr2hsv),
        }
        for name, (dense, call) in calls.items():
            expected = call(dense)
            for layout, array in layouts(dense).items():
                with self.subTest(argument=name, layout=layout):
                    before = array.copy()
                    np.testing.assert_array_equal(call(array), expected)
                    np.testing.assert_array_equal(array, before)

    def test_matrices_and_lists_may_have_strides_too(self):
        matrix = np.array([[2, 0, 1], [0, 2, 5]], np.float32)
        for strided in (np.asfortranarray(matrix), np.repeat(matrix, 2, axis=1)[:, ::2], matrix[::-1].copy()[::-1]):
            self.assertEqual(orvex.pointAffine((3, 4), strided, 1, (0, 0)), orvex.Point(7, 13))
        unaligned = np.frombuffer(b"x" + matrix.tobytes(), np.float32, offset=1).reshape(2, 3)
        self.assertEqual(orvex.pointAffine((3, 4), unaligned, 1, (0, 0)), orvex.Point(7, 13))
        points = np.array([[0, 0], [4, 0], [4, 3]], np.int32)
        self.assertEqual(orvex.convexHull(np.asfortranarray(points)).tolist(), points.tolist())

    def test_results_are_new_writable_dense_arrays(self):
        for made in (orvex.bgr2gray(IMAGE), orvex.hist(IMAGE[..., 0]), orvex.bwlabel(IMAGE[..., 0] & 1)[0],
                     orvex.convexHull([(0, 0), (3, 0), (0, 3)]), orvex.getRotationMatrix2D((1, 1), 3, 1)):
            self.assertTrue(made.flags.c_contiguous and made.flags.writeable and made.flags.aligned)
            made[...] = 1
        self.assertFalse(np.shares_memory(orvex.bgr2gray(IMAGE[..., 0].copy()), IMAGE))

    def test_a_wrong_type_is_a_type_error_that_names_the_argument(self):
        grey = IMAGE[..., 0]
        wrong = {
            "src: a numpy array of uint8 wanted, list": lambda: orvex.bgr2gray([[1, 2]]),
            "src: a numpy array of uint8 wanted, NoneType": lambda: orvex.bgr2gray(None),
            "src: uint8 wanted, int64": lambda: orvex.otsu(grey.astype(np.int64)),
            "src: uint8 wanted, float32": lambda: orvex.otsu(grey.astype(np.float32)),
            "src: uint8 wanted, bool": lambda: orvex.otsu(grey > 3),
            "mask: uint8 wanted, int8": lambda: orvex.otsu(grey, grey.astype(np.int8)),
            "dst: uint8 wanted, uint16": lambda: orvex.thresholdSeg(grey, 3, dst=grey.astype(np.uint16)),
            "yuv: a numpy array of uint8 wanted, bytes": lambda: orvex.yuv2bgr(b"123456", 2, 2),
            "trans_matrix: float32 wanted, float64": lambda: orvex.warpAffine(grey, np.eye(2, 3), (3, 3)),
            "trans_mat: float32 wanted, >f4": lambda: orvex.rectAffine((1, 2, 3, 4), np.eye(2, 3, dtype=">f4")),
            "points: int32 wanted, int64": lambda: orvex.convexHull(np.zeros((3, 2), np.int64)),
            "rects: int32 wanted, float64": lambda: orvex.divideComponentsToRows(np.zeros((3, 4))),
            "points: an int32 array or a sequence of tuples wanted, int": lambda: orvex.convexHull(3),
            "n: an integer wanted, float": lambda: orvex.rot90ClockWise(grey, 1.0),
            "threshold: an integer wanted, str": lambda: orvex.thresholdSeg(grey, "3"),
            "std_ratio: a number wanted, str": lambda: orvex.adaptiveThreshold(grey, 3, "3"),
            "scale: a number wanted, NoneType": lambda: orvex.resize(grey, None),
            "size: .width, height. wanted, int": lambda: orvex.dilateGray(grey, 3),
            "size: an integer wanted, float": lambda: orvex.dilateGray(grey, (3, 3.5)),
            "center: .x, y. wanted, float": lambda: orvex.getRotationMatrix2D(1.0, 2, 3),
            "incompatible function arguments": lambda: orvex.otsu(),
        }
        for message, call in wrong.items():
            with self.subTest(message=message), self.assertRaisesRegex(TypeError, message):
                call()

    def test_a_wrong_shape_is_a_value_error_that_names_the_argument(self):
        grey = IMAGE[..., 0]
        huge = np.broadcast_to(np.uint8(1), (50_000, 50_000))
        wrong = {
            "^src: 2 or 3 dimensions wanted, 1 dimension given": lambda: orvex.otsu(grey[0]),
            "^src: 2 or 3 dimensions wanted, 4 dimensions given": lambda: orvex.otsu(IMAGE[None]),
            "^src: 2 or 3 dimensions wanted, 0 dimensions given": lambda: orvex.otsu(np.array(3, np.uint8)),
            "^yuv: 1 or 2 dimensions wanted, 3 dimensions given": lambda: orvex.yuv2bgr(IMAGE, 2, 2),
            "^trans_mat: 2 dimensions": lambda: orvex.rectAffine((1, 2, 3, 4), np.zeros(6, np.float32)),
            r"^points: N x 2 wanted, \(3, 3\) given": lambda: orvex.convexHull(np.zeros((3, 3), np.int32)),
            r"^rects: N x 4 wanted, \(4,\) given": lambda: orvex.divideComponentsToRows(np.zeros(4, np.int32)),
            "^points: .x, y. wanted, 3 given": lambda: orvex.convexHull([(1, 2, 3)]),
            "^size: .width, height. wanted, 1 given": lambda: orvex.dilateGray(grey, (3,)),
            "^n: an integer of 32 bits wanted, 2147483648": lambda: orvex.rot90ClockWise(grey, 2**31),
            "^n: an integer of 32 bits wanted, -1180591620717411303424": lambda: orvex.rot90ClockWise(grey, -(2**70)),
            "^src: at most 2147483647 elements wanted, 2500000000": lambda: orvex.otsu(huge),
        }
        for message, call in wrong.items():
            with self.subTest(message=message), self.assertRaisesRegex(ValueError, message):
                call()

    def test_extents_and_channels_are_the_library_s_to_refuse(self):
        for call in (lambda: orvex.otsu(IMAGE), lambda: orvex.warpAffine(IMAGE, np.eye(3, dtype=np.float32), (3, 3)),
                     lambda: orvex.dilateGray(IMAGE[..., 0], (0, 3))):
            with self.assertRaises(orvex.Error) as caught:
                call()
            self.assertEqual(caught.exception.code, 1)

    def test_results_too_large_are_errors(self):
        identity = np.eye(2, 3, dtype=np.float32)
        for size in ((-3, -3), (2**16, 2**16), (2**31 - 1, 2**31 - 1), (-1, 5)):
            for interp in (0, 5):
                with self.subTest(size=size), self.assertRaises(orvex.Error) as caught:
                    orvex.warpAffine(IMAGE, identity, size, interp)
                self.assertEqual(caught.exception.code, 3)


if __name__ == "__main__":
    unittest.main()
