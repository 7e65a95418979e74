// Leptonica: document images. Binary ones have one bit a pixel there; rows that compare binary operations
// include the packing and unpacking that a caller with bytes needs, labelled and component ones do not.
#include <leptonica/allheaders.h>

#include <cmath>
#include <cstring>
#include <memory>

#include "cases.h"

namespace bench {

namespace {

struct Destroy {
    void operator()(PIX* pix) const { pixDestroy(&pix); }
};
using Image = std::unique_ptr<PIX, Destroy>;

Image gray_pix(const U8& m) {
    Image pix(pixCreate(m.cols, m.rows, 8));
    for (int row = 0; row < m.rows; ++row)
        for (int col = 0; col < m.cols; ++col)
            SET_DATA_BYTE(pixGetData(pix.get()) + row * pixGetWpl(pix.get()), col,
                          m.data[row * m.cols + col]);
    return pix;
}

Image colour_pix(const U8& m) {
    Image pix(pixCreate(m.cols, m.rows, 32));
    for (int row = 0; row < m.rows; ++row)
        for (int col = 0; col < m.cols; ++col) {
            const unsigned char* const p = m.data + (static_cast<size_t>(row) * m.cols + col) * 3;
            composeRGBPixel(p[2], p[1], p[0], pixGetData(pix.get()) + row * pixGetWpl(pix.get()) + col);
        }
    return pix;
}

}  // namespace

void add_leptonica(std::vector<Case>& cases, const Inputs& in) {
    setMsgSeverity(L_SEVERITY_NONE);
    const auto add = [&](const std::string& name, std::function<void()> run) {
        add_peer(cases, name, "Leptonica", run);
    };
    const std::shared_ptr<PIX> gray(gray_pix(in.gray).release(), Destroy());
    const std::shared_ptr<PIX> colour(colour_pix(in.photo).release(), Destroy());
    const std::shared_ptr<PIX> text_bytes(gray_pix(in.text).release(), Destroy());

    add("hist", [gray] {
        NUMA* h = pixGetGrayHistogram(gray.get(), 1);
        numaDestroy(&h);
    });
    add("equalizeHist", [gray] { Image(pixEqualizeTRC(nullptr, gray.get(), 1.0f, 1)); });
    add("otsu", [gray] {
        NUMA* h = pixGetGrayHistogram(gray.get(), 1);
        l_int32 threshold;
        numaSplitDistribution(h, 0.0f, &threshold, nullptr, nullptr, nullptr, nullptr, nullptr);
        numaDestroy(&h);
    });
    add("countNonZero", [gray] {
        Image binary(pixThresholdToBinary(gray.get(), 1));
        l_int32 count;
        pixCountPixels(binary.get(), &count, nullptr);
    });
    add("thresholdSeg", [gray] { Image(pixThresholdToBinary(gray.get(), 120)); });
    add("saliencyDetect", [gray] {
        NUMA* h = pixGetGrayHistogram(gray.get(), 1);
        NUMA* map = numaCreate(256);
        for (int level = 0; level < 256; ++level) {
            float sum = 0, count;
            for (int k = 0; k < 256; ++k) {
                numaGetFValue(h, k, &count);
                sum += static_cast<float>(std::abs(level - k)) * count;
            }
            numaAddNumber(map, sum / static_cast<float>(1 << 22));
        }
        Image out(pixCopy(nullptr, gray.get()));
        pixTRCMap(out.get(), nullptr, map);
        numaDestroy(&map);
        numaDestroy(&h);
    });
    for (const int block : {15, 31, 51})
        add("adaptiveThreshold " + std::to_string(block), [gray, block] {
            Image mean(pixWindowedMean(gray.get(), block / 2, block / 2, 0, 1));
            Image out(pixVarThresholdToBinary(gray.get(), mean.get()));
        });
    const float angle = 7 * 3.14159265f / 180;
    add("warpAffine 7 degrees 1ch", [gray, angle] { Image(pixRotateAMGray(gray.get(), angle, 0)); });
    add("warpAffine 7 degrees 3ch", [colour, angle] { Image(pixRotateAMColor(colour.get(), angle, 0)); });
    for (const int side : {3, 9, 31}) {
        add("dilateBinary " + std::to_string(side), [text_bytes, side] {
            Image packed(pixThresholdToBinary(text_bytes.get(), 128));
            Image out(pixDilateBrick(nullptr, packed.get(), side, side));
            Image bytes(pixConvert1To8(nullptr, out.get(), 0, 255));
        });
        add("erodeBinary " + std::to_string(side), [text_bytes, side] {
            Image packed(pixThresholdToBinary(text_bytes.get(), 128));
            Image out(pixErodeBrick(nullptr, packed.get(), side, side));
            Image bytes(pixConvert1To8(nullptr, out.get(), 0, 255));
        });
        add("dilateGray " + std::to_string(side),
            [gray, side] { Image(pixDilateGray(gray.get(), side, side)); });
        add("erodeGray " + std::to_string(side),
            [gray, side] { Image(pixErodeGray(gray.get(), side, side)); });
    }
    add("morphGradient 3", [gray] {
        Image gradient(pixMorphGradient(gray.get(), 3, 3, 0));
        Image out(pixThresholdToBinary(gradient.get(), 30));
    });
    for (const auto& [label, src] : {std::pair<const char*, const U8*>{"text", &in.text},
                                     {"noise 0.1", &in.noise},
                                     {"noise 0.5", &in.half_noise}}) {
        Image bytes = gray_pix(*src);
        // Its foreground is dark.
        const std::shared_ptr<PIX> binary(pixThresholdToBinary(bytes.get(), 128), Destroy());
        pixInvert(binary.get(), binary.get());
        add("bwlabel " + std::string(label), [binary] { Image(pixConnCompTransform(binary.get(), 4, 32)); });
        add("connectdComponent " + std::string(label), [binary] {
            BOXA* boxes = pixConnCompBB(binary.get(), 4);
            boxaDestroy(&boxes);
        });
        // Its way to the pixels of each component: one image a component, and the coordinates set in it.
        add("connectdComponent points " + std::string(label), [binary] {
            PIXA* parts;
            BOXA* boxes = pixConnComp(binary.get(), &parts, 4);
            const int count = boxaGetCount(boxes);
            PTAA* lists = ptaaCreate(count);
            for (int k = 0; k < count; ++k) {
                PIX* part = pixaGetPix(parts, k, L_CLONE);
                BOX* box = boxaGetBox(boxes, k, L_CLONE);
                ptaaAddPta(lists, ptaGetPixelsFromPix(part, box), L_INSERT);
                pixDestroy(&part);
                boxDestroy(&box);
            }
            ptaaDestroy(&lists);
            pixaDestroy(&parts);
            boxaDestroy(&boxes);
        });
    }
}

}  // namespace bench
