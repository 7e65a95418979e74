// Pictures and letters for tests.
#ifndef DOCPREP_DRAWN_H
#define DOCPREP_DRAWN_H

#include <functional>
#include <vector>

#include "formats/photo.h"
#include "pipeline/text_components.h"

docprep::Rects rects_of(const std::vector<orvex_cv_991::Rect>& list);

docprep::Image gray_picture(int rows, int cols, int level);

/// Sets what a rectangle covers of a grey picture.
void fill(docprep::Image& picture, const orvex_cv_991::Rect& rect, int level);

/// Sets each pixel of a grey picture to what `level` gives for (x, y).
void shade(docprep::Image& picture, const std::function<double(int, int)>& level);

int pixel(const docprep::Image& picture, int x, int y);

/// Letters of a line, from left to right, 10 pixels wide on a step of 14, and 14 high: every third with
/// an ascender, every seventh with a descender. `foot` gives the row below them at a column.
docprep::Rects letters_of_line(int left, int n, const std::function<double(double)>& foot);

void append(docprep::Rects& rects, const docprep::Rects& others);

#endif  // DOCPREP_DRAWN_H
