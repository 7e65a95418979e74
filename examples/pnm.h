// Binary PPM (colour) and PGM (grey) files: a short header in text, then the bytes of the pixels.
#ifndef EXAMPLES_PNM_H
#define EXAMPLES_PNM_H

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string>
#include <utility>

#include "cv_imgproc.h"

using Image = orvex_cv_991::Mat<unsigned char>;

/// Files have red first, the library has blue first.
inline void swap_red_and_blue(Image& image) {
    for (int at = 0; image.channels == 3 && at < image.rows * image.step; at += 3)
        std::swap(image.data[at], image.data[at + 2]);
}

/// A PPM or PGM file of 8 bits a channel, without comments in its header.
inline Image read_pnm(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string kind;
    int cols = 0, rows = 0, most = 0;
    file >> kind >> cols >> rows >> most;
    file.get();  // the one blank after the header
    if (!file || (kind != "P5" && kind != "P6") || cols < 1 || rows < 1 || cols > 30000 || rows > 20000 ||
        most != 255)
        throw std::runtime_error(path + ": not a PPM or PGM of 8 bits");
    Image image;
    image.mat_create(rows, cols, kind == "P6" ? 3 : 1, 0);
    file.read(reinterpret_cast<char*>(image.data), static_cast<std::streamsize>(rows) * image.step);
    if (!file) throw std::runtime_error(path + ": ends too early");
    swap_red_and_blue(image);
    return image;
}

inline void write_pnm(const std::string& path, Image image) {
    swap_red_and_blue(image);
    std::ofstream file(path, std::ios::binary);
    file << (image.channels == 3 ? "P6" : "P5") << '\n' << image.cols << ' ' << image.rows << "\n255\n";
    file.write(reinterpret_cast<const char*>(image.data),
               static_cast<std::streamsize>(image.rows) * image.step);
    if (!file.flush()) throw std::runtime_error(path + ": cannot be written");
}

#endif  // EXAMPLES_PNM_H
