"""What the forms of operations in Python add to those of C++; the golden digests cover what operations compute."""
import unittest

import numpy as np

import orvex_991 as orvex


def image(*rows):
    return np.array(rows, np.uint8)


class Operations(unittest.TestCase):
    def assert_image(self, made, *rows):
        self.assertEqual(made.dtype, np.uint8)
        np.testing.assert_array_equal(made, image(*rows))

    def test_an_image_of_one_channel_comes_out_with_two_dimensions(self):
        self.assertEqual(orvex.flipLR(np.zeros((2, 3, 1), np.uint8)).shape, (2, 3))
        self.assertEqual(orvex.flipLR(np.zeros((2, 3, 4), np.uint8)).shape, (2, 3, 4))

    def test_an_image_without_pixels_gives_one_without_pixels(self):
        self.assertEqual(orvex.bgr2gray(np.zeros((0, 0, 3), np.uint8)).size, 0)
        self.assertEqual(orvex.yuv2bgr(np.zeros(0, np.uint8), 0, 5).shape, (0, 5, 3))

    def test_frames_of_one_and_of_two_dimensions_give_the_same(self):
        frame = np.arange(6 * 4, dtype=np.uint8) * 9
        flat = orvex.yuv2bgr(frame, 4, 4)
        self.assertEqual(flat.shape, (4, 4, 3))
        np.testing.assert_array_equal(orvex.yuv2bgr(frame.reshape(6, 4), rows=4, cols=4), flat)

    def test_a_frame_may_be_longer_but_not_shorter_than_its_extents_say(self):
        for rows, cols, most in ((4, 4, 24), (3, 3, 9 + 3 + 4), (1, 1, 3), (5, 2, 10 + 6), (2, 5, 10 + 6)):
            with self.subTest(rows=rows, cols=cols):
                self.assertEqual(orvex.yuv2bgr(np.zeros(most, np.uint8), rows, cols).shape, (rows, cols, 3))
                self.assertEqual(orvex.yuv2bgr(np.zeros(most + 7, np.uint8), rows, cols).shape, (rows, cols, 3))
                with self.assertRaisesRegex(ValueError, f"^yuv: at least {most} bytes"):
                    orvex.yuv2bgr(np.zeros(most - 1, np.uint8), rows, cols)
        with self.assertRaisesRegex(ValueError, "^yuv: rows of cols = 5 bytes"):
            orvex.yuv2bgr(np.zeros((60, 4), np.uint8), 4, 5)
        with self.assertRaisesRegex(ValueError, "^rows: 0 or more"):
            orvex.yuv2bgr(np.zeros(60, np.uint8), -4, 5)
        with self.assertRaisesRegex(ValueError, "^yuv: at least .* bytes"):
            orvex.yuv2bgr(np.zeros(60, np.uint8), 2**31 - 1, 2**31 - 1)

    def test_a_mask_selects_what_otsu_looks_at(self):
        src = image([10, 10, 200], [10, 90, 90])
        self.assertEqual(orvex.otsu(src), 90)
        self.assertEqual(orvex.otsu(src, mask=image([1, 0, 0], [0, 1, 0])), 10)
        self.assertEqual(orvex.otsu(src, None), 90)

    def test_thresholding_starts_from_a_destination_of_the_same_extents(self):
        src = image([0, 100], [200, 50])
        self.assert_image(orvex.thresholdSeg(src, 100), [0, 255], [255, 0])
        colours = np.full((2, 2, 3), 7, np.uint8)
        made = orvex.thresholdSeg(src, 100, dst=colours)
        self.assertEqual(made.shape, (2, 2, 3))
        self.assertEqual(made.ravel().tolist(), [0, 255, 255, 0] + [7] * 8)
        self.assertEqual(set(colours.ravel()), {7})
        self.assert_image(orvex.thresholdSeg(src, 100, dst=np.zeros((5, 5), np.uint8)), [0, 255], [255, 0])

    def test_threshold_needs_nothing_but_an_image(self):
        src = image([10, 200], [10, 200])
        level, made = orvex.threshold(src)
        self.assertEqual(level, 10)
        self.assert_image(made, [255, 255], [255, 255])
        self.assert_image(orvex.threshold(src, type=9)[1], [0, 0], [0, 0])

    def test_threshold_with_a_mask_makes_its_own_destination_or_fills_one_with_room(self):
        src, mask = image([10, 200], [10, 200]), image([1, 1], [0, 0])
        self.assert_image(orvex.threshold(src, mask=mask)[1], [255, 255], [0, 0])
        level, made = orvex.threshold(src, 0, 255, 8, mask, dst=np.full((1, 6), 7, np.uint8))
        self.assertEqual((level, made.tolist()), (10, [[255, 255, 0, 0, 7, 7]]))
        with self.assertRaises(orvex.Error) as caught:
            orvex.threshold(src, mask=mask, dst=np.zeros((1, 3), np.uint8))
        self.assertEqual(caught.exception.code, 3)

    def test_overloads_are_chosen_by_what_is_given(self):
        src = image([1, 2, 3])
        self.assert_image(orvex.rot90ClockWise(src, 1), [1], [2], [3])
        self.assert_image(orvex.rot90AntiClockWise(src=src, n=1), [3], [2], [1])
        for turn in (orvex.rot90ClockWise, orvex.rot90AntiClockWise):
            self.assertEqual(turn((1, 0), (3, 1), 2), orvex.Point(1, 0))
            self.assertEqual(turn(pt=(1, 0), size=(3, 1), n=2), orvex.Point(1, 0))
            rect = turn((0, 0, 1, 1), (3, 1), 0)
            self.assertEqual(rect, orvex.Rect(0, 0, 1, 1))
            self.assertIsInstance(rect, orvex.Rect)
            self.assertEqual(turn(src=orvex.Rect(0, 0, 1, 1), img_size=orvex.Size(3, 1), n=0), rect)
        for size in ((6, 2), orvex.Size(6, 2), [6, 2], np.array([6, 2])):
            self.assertEqual(orvex.resize(src, size).shape, (2, 6))
        for factor in (2, 2.0, np.float32(2)):
            self.assertEqual(orvex.resize(src, factor).shape, (2, 6))
        self.assertEqual(orvex.resize(src, scale=2).shape, (2, 6))
        self.assertEqual(orvex.resize(src, out_size=(6, 2), interp=orvex.INTERP_LINEAR).shape, (2, 6))
        self.assertEqual(orvex.resize(src, 2, 5).any(), False)

    def test_the_smallest_rectangle_is_that_of_a_mask_or_of_points(self):
        mask = np.zeros((5, 6), np.uint8)
        mask[1:4, 2:5] = 1
        points = np.argwhere(mask).astype(np.int32)[:, ::-1]
        of_mask = orvex.minAreaRect(mask)
        self.assertEqual((of_mask.width, of_mask.height, of_mask.center), (2, 2, (3, 2)))
        self.assertEqual(set(of_mask.pts), {(2, 1), (4, 1), (4, 3), (2, 3)})
        self.assertEqual(orvex.minAreaRect(points), of_mask)
        self.assertEqual(orvex.minAreaRect(points=[tuple(map(int, p)) for p in points]), of_mask)
        self.assertEqual(orvex.minAreaRect(mat=mask), of_mask)
        self.assertEqual(orvex.minAreaRect([]), orvex.RotatedRect((), (0, 0), 0, 0, 0))
        self.assertAlmostEqual(orvex.getRotatedRectAngle(of_mask) % 1.570795, 0, places=4)

    def test_affine_matrices_come_out_and_go_in(self):
        matrix = orvex.getRotationMatrix2D((1, 1), 0, 2)
        self.assertEqual((matrix.dtype, matrix.tolist()), (np.float32, [[2, 0, -1], [0, 2, -1]]))
        self.assertEqual(orvex.pointAffine((2, 3), matrix, 1, (10, 20)), orvex.Point(13, 25))
        self.assertEqual(orvex.rectAffine((1, 1, 2, 2), matrix)[:2], (1, 1))
        self.assertEqual(orvex.warpAffine(image([1, 2], [3, 4]), matrix, (4, 4)).shape, (4, 4))

    def test_a_warp_tells_which_pixels_it_interpolated(self):
        src = np.arange(12, dtype=np.uint8).reshape(3, 4)
        still = np.array([[1, 0, 0], [0, 1, 0]], np.float32)
        given = np.full((1, 14), 7, np.uint8)
        made, mask = orvex.warpAffine(src, still, (4, 3), mask=given)
        np.testing.assert_array_equal(made, src)
        self.assertEqual(mask.tolist(), [[1, 1, 1, 0, 1, 1, 1, 0, 0, 0, 0, 0, 7, 7]])
        self.assertEqual(set(given.ravel()), {7})
        made, mask = orvex.warpAffine(src, still, (4, 3), 5, given)
        self.assertEqual((made.any(), set(mask.ravel())), (False, {7}))

    def test_components_come_out_as_arrays(self):
        src = image([0, 255, 0, 0], [0, 255, 0, 255], [0, 0, 0, 0])
        labels, number = orvex.bwlabel(src)
        self.assertEqual((labels.dtype, number), (np.int32, 2))
        self.assertEqual(labels.tolist(), [[0, 1, 0, 0], [0, 1, 0, 2], [0, 0, 0, 0]])
        rects = orvex.connectdComponent(src)
        self.assertEqual((rects.dtype, rects.tolist()), (np.int32, [[1, 0, 1, 2], [3, 1, 1, 1]]))
        rects, points = orvex.connectdComponent(src, points=True)
        self.assertEqual(rects.shape, (2, 4))
        self.assertEqual([pixels.tolist() for pixels in points], [[[1, 0], [1, 1]], [[3, 1]]])
        rows = orvex.divideComponentsToRows(rects)
        self.assertEqual([row.tolist() for row in rows], [[[1, 0, 1, 2], [3, 1, 1, 1]]])
        self.assertEqual(orvex.connectdComponent(src * 0).shape, (0, 4))
        self.assertEqual(orvex.divideComponentsToRows([]), [])

    def test_lists_of_points_and_rectangles_go_in_as_arrays_or_tuples(self):
        points = [(0, 0), (4, 0), (2, 1), (4, 3), (0, 3)]
        hull = orvex.convexHull(points)
        self.assertEqual((hull.dtype, hull.tolist()), (np.int32, [[0, 0], [4, 0], [4, 3], [0, 3]]))
        every_other = np.repeat(np.array(points, np.int32), 2, axis=0)[::2]
        self.assertEqual(orvex.convexHull(every_other).tolist(), hull.tolist())
        self.assertEqual(orvex.convexHull([orvex.Point(*p) for p in points]).tolist(), hull.tolist())
        rects = [(5, 0, 2, 9), (1, 3, 2, 2), (0, 20, 4, 4)]
        for given in (rects, np.array(rects, np.int32), [orvex.Rect(*r) for r in rects]):
            rows = orvex.divideComponentsToRows(given)
            self.assertEqual([row.tolist() for row in rows], [[[1, 3, 2, 2], [5, 0, 2, 9]], [[0, 20, 4, 4]]])

    def test_rectangles_points_and_numbers_come_out_as_such(self):
        self.assertEqual(orvex.checkRectInMat((4, 3), (-1, -1, 9, 9)), orvex.Rect(0, 0, 4, 3))
        self.assertEqual(orvex.dilateRect((5, 6, 7, 8), size=(1, 2)), orvex.Rect(4, 4, 9, 12))
        self.assertEqual(orvex.calcLineDegree((0, 0), (1.5, 0)), 0)
        src = image([7, 0], [0, 9])
        self.assertEqual((orvex.minVal(src), orvex.maxVal(src), orvex.countNonZero(src)), (7, 255, 2))
        self.assertEqual((orvex.countNonZeroRate(src), orvex.meanStdDev(src)[0]), (0.5, 4))
        shares = orvex.hist(src)
        self.assertEqual((shares.dtype, shares.shape, shares[0]), (np.float32, (256,), 0.5))

    def test_detectors_take_their_masks_and_switches(self):
        grey = np.tile(image([0, 0, 0, 0, 200, 200, 200, 200]), (40, 8))
        self.assertGreater(orvex.getSharpness(grey), 0)
        self.assertEqual(orvex.getSharpness(grey, mask=grey * 0), 0)
        made, levels = orvex.saliencyDetect(grey, mask=grey * 0 + 1)
        self.assertEqual((made.shape, levels.shape, levels.dtype), (grey.shape, (256,), np.uint8))
        self.assertEqual(made[0, 0], levels[0])
        black = np.zeros((40, 50, 3), np.uint8)
        for relaxed in (False, True):
            self.assertFalse(orvex.redColorDetect(black, relaxed).any())

    def test_filters_take_their_window_and_type(self):
        src = image([0, 0, 0], [0, 255, 0], [0, 0, 0])
        grown = orvex.dilateBinary(src, (3, 1))
        self.assert_image(grown, [0, 0, 0], [255, 255, 255], [0, 0, 0])
        self.assert_image(orvex.morphologyBinary(src, (3, 1), orvex.MORPH_DILATE), *grown)
        self.assert_image(orvex.morphologyBinary(src, size=orvex.Size(3, 1), type=orvex.MORPH_ERODE), *(src * 0))
        self.assert_image(orvex.dilateGray(src, (3, 1)), *grown)


if __name__ == "__main__":
    unittest.main()
