// The filters that take a window and nothing else.
#ifndef ORVEX_TESTS_SUPPORT_FILTERS_H
#define ORVEX_TESTS_SUPPORT_FILTERS_H

#include "cv_imgproc.h"
#include "images.h"
#include "morphology.h"

namespace testing_support {

struct Filter {
    const char* name;
    void (*library)(const U8&, U8&, const orvex_cv_991::Size&);
    void (*plain)(reference::Image<reference::Byte>, reference::Image<reference::Byte>&, reference::Size);
};

inline constexpr Filter kFilters[] = {
    {"dilateBinary", orvex_cv_991::CImgproc::dilateBinary, reference::dilateBinary},
    {"erodeBinary", orvex_cv_991::CImgproc::erodeBinary, reference::erodeBinary},
    {"openBinary", orvex_cv_991::CImgproc::openBinary, reference::openBinary},
    {"closeBinary", orvex_cv_991::CImgproc::closeBinary, reference::closeBinary},
    {"dilateGray", orvex_cv_991::CImgproc::dilateGray, reference::dilateGray},
    {"erodeGray", orvex_cv_991::CImgproc::erodeGray, reference::erodeGray},
    {"morphGradient", orvex_cv_991::CImgproc::morphGradient, reference::morphGradient},
};

}  // namespace testing_support

#endif  // ORVEX_TESTS_SUPPORT_FILTERS_H
