// Where a photograph has a red seal. usage: red_seal PHOTO.ppm
// prints: seal: 137 x 145 at (954, 575)
#include <cstdio>

#include "pnm.h"

using namespace orvex_cv_991;

int main(int argc, char** argv) try {
    if (argc != 2) return 64;
    const Image photo = read_pnm(argv[1]);
    Image mask;
    CImgproc::redColorDetect(photo, mask, false);  // 255 on a seal

    orvex_991::vector<Rect> parts;
    CImgproc::connectdComponent(mask, parts, nullptr);
    for (int i = 0; i < parts.size(); ++i)
        std::printf("seal: %d x %d at (%d, %d)\n", parts[i].width, parts[i].height, parts[i].x, parts[i].y);
    return 0;
} catch (const orvex_991::CException& error) {
    if (error.code != 2) throw;
    std::printf("no seal: %s\n", error.message.c_str());  // "could not find any valid red circle"
    return 0;
}
