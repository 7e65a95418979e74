"""What the library prints: silent, or in the log of the context that called it."""
import asyncio
import contextvars
import os
import re
import subprocess
import sys
import threading
import unittest

import numpy as np

import orvex_991 as orvex

GREY = np.zeros((40, 50), np.uint8)
TIME = r"\d+\.\d{6}ms"


class Log(unittest.TestCase):
    def assert_lines(self, lines, *patterns):
        self.assertEqual(len(lines), len(patterns), lines)
        for line, pattern in zip(lines, patterns):
            self.assertRegex(line, rf"\A{pattern}\Z")

    def test_lines_are_those_of_the_library(self):
        with orvex.log() as lines:
            orvex.bgr2gray(GREY)
            self.assert_lines(lines, r"D cv_imgproc\.cpp:\d+\] bgr2gray - source image is 1-channel",
                              rf"D cv_imgproc\.cpp:\d+\] bgr2gray cost time: {TIME}")
            orvex.resize(GREY, (20, 20))
        self.assert_lines(lines[2:], r"D cv_imgproc\.cpp:\d+\] linear",
                          rf"D cv_imgproc\.cpp:\d+\] warpaffine cost time: {TIME}",
                          rf"D cv_imgproc\.cpp:\d+\] image resize cost time: {TIME}")

    def test_the_warning_of_a_failed_check_has_three_lines(self):
        with orvex.log() as lines:
            with self.assertRaises(orvex.Error):
                orvex.hist(GREY[:0])
        self.assert_lines(lines, r"D cv_imgproc\.cpp:\d+\] \[warn\] input error !src\.empty\(\) ",
                          r"\[warn\]file: .*cv_imgproc\.cpp, line: \d+, function: hist", "")

    def test_nothing_is_kept_before_or_after_the_block(self):
        orvex.bgr2gray(GREY)
        with orvex.log() as lines:
            pass
        orvex.bgr2gray(GREY)
        self.assertEqual(lines, [])

    def test_the_innermost_of_nested_logs_gets_the_lines(self):
        with orvex.log() as outer:
            with orvex.log() as inner:
                orvex.bgr2gray(GREY)
            self.assertEqual((len(inner), len(outer)), (2, 0))
            orvex.bgr2gray(GREY)
        self.assertEqual((len(inner), len(outer)), (2, 2))

    def test_a_log_ends_with_an_exception_of_its_block(self):
        with self.assertRaises(KeyError), orvex.log() as lines:
            raise KeyError
        orvex.bgr2gray(GREY)
        self.assertEqual(lines, [])

    def test_python_s_own_prints_are_not_logged(self):
        with orvex.log() as lines:
            sys.stdout.flush()
            os.write(1, b"")
            print("", end="")
            print("printed by Python", file=sys.stderr)
        self.assertEqual(lines, [])

    def test_threads_do_not_see_each_other_s_lines(self):
        found = {}
        begin = threading.Barrier(4)

        def work(number):
            size = 100 + 10 * number
            with orvex.log() as lines:
                begin.wait()
                for _ in range(200):
                    with self.assertRaises(orvex.Error):
                        orvex.dilateGray(GREY, (size, size))
                    orvex.bgr2gray(GREY)
            found[number] = lines

        def silent():
            begin.wait()
            for _ in range(200):
                orvex.equalizeHist(GREY)
                orvex.flipLR(GREY)

        threads = [threading.Thread(target=work, args=(number,)) for number in range(3)]
        threads.append(threading.Thread(target=silent))
        with orvex.log() as ours:
            for thread in threads:
                thread.start()
            for thread in threads:
                thread.join()
        self.assertEqual(ours, [])
        for lines in found.values():
            self.assertEqual(len(lines), 200 * 5)
            for k in range(0, len(lines), 5):
                self.assert_lines(lines[k:k + 5], r".*input error src\.rows >= size\.height ", r"\[warn\]file: .*", "",
                                  ".*1-channel", rf".*bgr2gray cost time: {TIME}")

    def test_a_context_of_its_own_sees_its_own_log(self):
        with orvex.log() as lines:
            inside = contextvars.copy_context()
        inside.run(orvex.bgr2gray, GREY)
        self.assertEqual(len(lines), 2)

    def test_tasks_of_one_thread_have_a_log_each(self):
        async def task(times):
            with orvex.log() as lines:
                for _ in range(times):
                    orvex.bgr2gray(GREY)
                    await asyncio.sleep(0)
            return len(lines)

        async def both():
            return await asyncio.gather(task(2), task(5))

        self.assertEqual(asyncio.run(both()), [4, 10])

    def test_standard_output_stays_empty(self):
        program = """if True:
            import numpy as np, orvex_991 as orvex
            grey = np.zeros((40, 50), np.uint8)
            colour = np.zeros((400, 500, 3), np.uint8)
            for call in (lambda: orvex.bgr2gray(grey), lambda: orvex.resize(grey, 2), lambda: orvex.otsu(colour),
                         lambda: orvex.getSharpness(colour), lambda: orvex.redColorDetect(colour),
                         lambda: orvex.bwlabel(grey), lambda: orvex.convexHull([(1, 2)])):
                with orvex.log() as lines:
                    try:
                        call()
                    except orvex.Error:
                        pass
                assert lines
                try:
                    call()
                except orvex.Error:
                    pass
        """
        done = subprocess.run([sys.executable, "-c", program], capture_output=True, text=True, check=False)
        self.assertEqual((done.returncode, done.stdout, done.stderr), (0, "", ""))

    def test_lines_are_text_whatever_the_bytes(self):
        with orvex.log() as lines:
            orvex.bgr2gray(GREY)
        self.assertTrue(all(type(line) is str and not re.search(r"[\r\n]", line) for line in lines))


if __name__ == "__main__":
    unittest.main()
