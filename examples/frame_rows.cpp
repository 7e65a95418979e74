// Rows of text in a camera frame. usage: frame_rows FRAME COLS ROWS   (NV21, without padding)
// prints: 15 rows, the first of 48 letters
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <vector>

#include "cv_imgproc.h"

using namespace orvex_cv_991;
using Rows = orvex_991::vector<orvex_991::vector<Rect>>;

// Rows of text in an NV21 camera frame with dark print on light paper.
Rows text_rows(const unsigned char* frame, int rows, int cols) {
    Mat<unsigned char> photo, gray, binary;
    CImgproc::yuv2bgr(frame, rows, cols, photo);
    CImgproc::bgr2gray(photo, gray);
    CImgproc::threshold(gray, binary, 0, 255, 8 | 1, {});  // Otsu, dark becomes 255
    orvex_991::vector<Rect> components, letters;
    CImgproc::connectdComponent(binary, components, nullptr);
    for (int i = 0; i < components.size(); ++i) {
        const int height = components[i].height;  // neither specks nor the desk around
        if (height > 4 && height < rows / 20) letters.push_back(components[i]);
    }
    Rows text;
    CImgproc::divideComponentsToRows(letters, text);
    return text;
}

int main(int argc, char** argv) {
    if (argc != 4) return 64;
    const int cols = std::atoi(argv[2]), rows = std::atoi(argv[3]);
    std::ifstream file(argv[1], std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    if (cols < 2 || rows < 2 || bytes.size() < static_cast<size_t>(cols) * rows * 3 / 2) return 2;
    const auto text = text_rows(reinterpret_cast<const unsigned char*>(bytes.data()), rows, cols);
    std::printf("%d rows, the first of %d letters\n", text.size(), text.size() > 0 ? text[0].size() : 0);
}
