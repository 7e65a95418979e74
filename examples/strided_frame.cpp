// A camera frame whose rows are padded, as a picture. usage: strided_frame FRAME.nv21 PICTURE.ppm
#include <fstream>
#include <iterator>
#include <vector>

#include "pnm.h"

// One plane as a camera hands it out: bytes from one row to the next, and from one sample to the next.
struct Plane {
    const unsigned char* data;
    int row_stride, pixel_stride;
};

// NV21 without padding, as yuv2bgr takes it: luma, then V and U in turn for each 2 x 2 pixels. cols is even.
std::vector<unsigned char> pack_nv21(Plane y, Plane u, Plane v, int rows, int cols) {
    std::vector<unsigned char> frame;
    for (int row = 0; row < rows; ++row)
        frame.insert(frame.end(), y.data + row * y.row_stride, y.data + row * y.row_stride + cols);
    for (int row = 0; row < (rows + 1) / 2; ++row)
        for (int col = 0; col < cols / 2; ++col) {
            frame.push_back(v.data[row * v.row_stride + col * v.pixel_stride]);
            frame.push_back(u.data[row * u.row_stride + col * u.pixel_stride]);
        }
    return frame;
}

int main(int argc, char** argv) {
    std::ifstream file(argc == 3 ? argv[1] : "", std::ios::binary);
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    if (bytes.size() != 1280 * 1080) return 2;
    const auto* const luma = reinterpret_cast<const unsigned char*>(bytes.data());
    const auto* const pairs = luma + 1280 * 720;
    // The last 64 of 1280 columns count as padding.
    const auto frame = pack_nv21({luma, 1280, 1}, {pairs + 1, 1280, 2}, {pairs, 1280, 2}, 720, 1216);
    Image photo;
    orvex_cv_991::CImgproc::yuv2bgr(frame.data(), 720, 1216, photo);
    write_pnm(argv[2], photo);
}
