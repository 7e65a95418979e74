"""Errors of the library in Python's terms."""
import pickle
import unittest

import numpy as np

import orvex_991 as orvex

GREY = np.zeros((4, 4), np.uint8)


def error_of(call):
    try:
        call()
    except orvex.Error as error:
        return error
    raise AssertionError("no error")


class Errors(unittest.TestCase):
    def test_a_failed_check_has_code_1_and_names_the_condition(self):
        error = error_of(lambda: orvex.otsu(np.zeros((2, 2, 3), np.uint8)))
        self.assertEqual((error.code, error.message), (1, ""))
        self.assertEqual(str(error), "code 1: input error 1 == src.channels")
        self.assertRegex(error.lines[0], r"^D cv_imgproc\.cpp:\d+\] \[warn\] input error 1 == src\.channels $")
        self.assertRegex(error.lines[1], r"^\[warn\]file: .*cv_imgproc\.cpp, line: \d+, function: otsu$")
        self.assertEqual(error.lines[2:], ("",))

    def test_messages_are_those_of_the_library(self):
        error = error_of(lambda: orvex.threshold(GREY, type=0))
        self.assertEqual((error.code, error.message, error.lines), (1, "only support otsu binary mode", ()))
        self.assertEqual(str(error), "code 1: only support otsu binary mode")
        specks = np.full((200, 200, 3), 200, np.uint8)
        specks[20:26, 20:26] = specks[90:97, 120:125] = (30, 30, 220)
        error = error_of(lambda: orvex.redColorDetect(specks))
        self.assertEqual((error.code, error.message), (2, "could not find any valid red circle"))

    def test_every_code_arrives(self):
        self.assertEqual(error_of(lambda: orvex.morphologyBinary(GREY, (3, 3), 9)).code, 1)
        self.assertEqual(error_of(lambda: orvex.morphGradient(GREY, (9, 9))).code, 2)
        self.assertEqual(error_of(lambda: orvex.resize(GREY, 2.0**15)).code, 3)
        self.assertEqual(error_of(lambda: orvex.bwlabel(np.array([[0, 255], [255, 255]], np.uint8))).code, 4)
        self.assertEqual(str(error_of(lambda: orvex.divideComponentsToRows([(0, -1, 2, 2)]))), "code 4: out of range")

    def test_errors_are_no_others_and_survive_pickling(self):
        self.assertEqual(orvex.Error.__mro__[1:], (Exception, BaseException, object))
        error = error_of(lambda: orvex.threshold(GREY, type=0))
        copy = pickle.loads(pickle.dumps(error))
        self.assertEqual((copy.code, copy.message, copy.lines, str(copy)),
                         (error.code, error.message, error.lines, str(error)))

    def test_an_error_leaves_nothing_behind(self):
        with self.assertRaises(orvex.Error):
            orvex.otsu(np.zeros((2, 2, 3), np.uint8))
        with orvex.log() as lines:
            self.assertEqual(orvex.otsu(GREY), 0)
        self.assertEqual(lines, [])


if __name__ == "__main__":
    unittest.main()
